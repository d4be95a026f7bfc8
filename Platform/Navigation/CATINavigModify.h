#pragma once

#include "CATBaseUnknown.h"
#include "CATInterface_var.h"
#include "CATNavigExpansionMode.h"

class CATNavigBox;
class CATNavigInstance;
class CATUnicodeString;

inline constexpr IID IID_CATINavigModify{"CATINavigModify"};

// What the navigation tree asks the navigation node of an object that it shows (see CATNavigNode). Every navigation
// node answers it.
class PLATFORM_API CATINavigModify : public CATBaseUnknown
{
    CATDeclareInterface(CATINavigModify, CATBaseUnknown)

public:
    // Gives the navigation node the look of the object that the instance refers to. Called when the node is drawn for
    // the first time and again after each redraw of its object.
    virtual void UpdateElem(CATNavigInstance* pInstance) = 0;

    // May change the text that the tree shows when the pointer rests on the node.
    virtual HRESULT ModifyShortHelp(CATUnicodeString& ioShortHelp) = 0;

    // The place in a tree that the node belongs to; null before the tree has set it and after it has given it up.
    virtual CATNavigInstance* GetAssociatedInstance() = 0;
    virtual void SetAssociatedInstance(CATNavigInstance* pInstance) = 0;

    virtual CATNavigExpansionMode GetExpansionMode() = 0;
    virtual void SetExpansionMode(CATNavigExpansionMode mode) = 0;

    // The tree that shows the node; null without an associated instance.
    virtual CATNavigBox* GetFatherContainer() = 0;
};

using CATINavigModify_var = CATInterface_var<CATINavigModify>;
