#pragma once

#include "CATBaseUnknown.h"
#include "CATUnicodeString.h"

// CATIGraphNode on every navigation node. The operations are described in the interface; they fail only for a null
// pointer.
class PLATFORM_API CATEGraphNodeOnNavigNode : public CATBaseUnknown
{
public:
    HRESULT SetIconName(const CATUnicodeString& usIconName);
    HRESULT GetIconName(CATUnicodeString* pusIconName);
    HRESULT SetIconMarking(unsigned char bOn);
    HRESULT SetLabelMarking(unsigned char bOn);
    unsigned char IconIsMarked();
    unsigned char LabelIsMarked();
    HRESULT SetStateCode(int code);
    int GetStateCode();

private:
    CATUnicodeString m_usIconName;
    int m_StateCode = 0;
    unsigned char m_bIconMarking = FALSE;
    unsigned char m_bLabelMarking = FALSE;
};
