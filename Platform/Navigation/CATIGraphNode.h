#pragma once

#include "CATBaseUnknown.h"
#include "CATInterface_var.h"

class CATUnicodeString;

inline constexpr IID IID_CATIGraphNode{"CATIGraphNode"};

// The look of a navigation node: its icon and its state mark. Every navigation node answers it. A new node has neither.
class PLATFORM_API CATIGraphNode : public CATBaseUnknown
{
    CATDeclareInterface(CATIGraphNode, CATBaseUnknown)

public:
    // Name of the icon; the empty name stands for the tree's own icon.
    virtual HRESULT SetIconName(const CATUnicodeString& usIconName) = 0;
    virtual HRESULT GetIconName(CATUnicodeString* pusIconName) = 0;

    // Whether the state is marked on the icon and in the label.
    virtual HRESULT SetIconMarking(unsigned char bOn) = 0;
    virtual HRESULT SetLabelMarking(unsigned char bOn) = 0;
    virtual unsigned char IconIsMarked() = 0;
    virtual unsigned char LabelIsMarked() = 0;

    // Which state is marked. The node keeps the code while the marking is off.
    virtual HRESULT SetStateCode(int code) = 0;
    virtual int GetStateCode() = 0;
};

using CATIGraphNode_var = CATInterface_var<CATIGraphNode>;
