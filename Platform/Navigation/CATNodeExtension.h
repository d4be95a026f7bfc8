#pragma once

#include "CATBaseUnknown.h"
#include "CATNavigExpansionMode.h"

class CATNavigBox;
class CATNavigInstance;
class CATUnicodeString;

// CATINavigModify as it comes with the navigation tree: the node keeps the tree's own look. Extensions of their own
// derive from it and override what they change. The operations are described in the interface.
class PLATFORM_API CATNodeExtension : public CATBaseUnknown
{
public:
    virtual void UpdateElem(CATNavigInstance* pInstance);
    virtual HRESULT ModifyShortHelp(CATUnicodeString& ioShortHelp);
    virtual CATNavigInstance* GetAssociatedInstance();
    virtual void SetAssociatedInstance(CATNavigInstance* pInstance);
    virtual CATNavigExpansionMode GetExpansionMode();
    virtual void SetExpansionMode(CATNavigExpansionMode mode);
    virtual CATNavigBox* GetFatherContainer();

private:
    CATNavigInstance* m_pInstance = nullptr;
    CATNavigExpansionMode m_ExpansionMode = CATNavigExpansionMode::FoldedAtFirst;
};
