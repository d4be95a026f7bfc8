#pragma once

#include "CATListValCATBaseUnknown_var.h"
#include "QTBBaseLibExport.h"
#include "QTBConstants.h"

class CATFrmEditor;
class CATFrmWindow;
class CATPathElement;
class CATUnicodeString;

// Windows and paths for highlighting.
class QTBBASELIB_API QTBVisUtil
{
public:
    // The path that leads to a node in an editor: for a rep node or a product from the root of its tree down, for any
    // other component the component alone. *ppPathElement receives it with a reference, which the caller releases.
    // Fails for an empty handle, null pointers and a rep node that the editor does not show.
    static HRESULT GetPathElementPtrFromNode(const CATBaseUnknown_var& spNode, CATFrmEditor* pFrmEditor,
                                             CATPathElement** ppPathElement);

    // The PDM window that shows a root part with that part number, or a file with that name, and the rep nodes that do.
    // Of several windows the current one is preferred, then the one that was opened first. Fails quietly when no window
    // does; the window pointer must be null on entry.
    static HRESULT GetQtbWindowForHighlight(const QTBRootRepNodeType& type, const CATUnicodeString& usKey,
                                            CATFrmWindow** ppFrmWindow, CATListValCATBaseUnknown_var* pRootRepNodes);
};
