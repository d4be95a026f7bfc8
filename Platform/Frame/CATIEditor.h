#pragma once

#include "CATBaseUnknown.h"
#include "CATInterface_var.h"

class CATFrmEditor;

inline constexpr IID IID_CATIEditor{"CATIEditor"};

// A document's way to its editor.
class PLATFORM_API CATIEditor : public CATBaseUnknown
{
    CATDeclareInterface(CATIEditor, CATBaseUnknown)

public:
    // The document's editor, created when it is first asked for. The layout owns it. May raise an error.
    virtual CATFrmEditor* GetEditor() = 0;
};

using CATIEditor_var = CATInterface_var<CATIEditor>;
