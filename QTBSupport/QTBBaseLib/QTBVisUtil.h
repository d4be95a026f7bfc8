#pragma once

#include "CATFrmWindow.h"
#include "CATInterface_var.h"
#include "CATListValCATBaseUnknown_var.h"
#include "CATListValCATUnicodeString.h"
#include "QTBBaseLibExport.h"
#include "QTBConstants.h"

class CATFrmEditor;
class CATIProduct;
class CATPathElement;
class QTBIRepNode;
using CATIProduct_var = CATInterface_var<CATIProduct>;
using QTBIRepNode_var = CATInterface_var<QTBIRepNode>;

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

    // The windows of the CAD session that show a document whose root product has that part number, in the order of
    // their opening.
    static HRESULT GetPsnWindowsForHighlight(const CATUnicodeString& usPartNumber, CATListPtrCATFrmWindow* pWindows);

    // The way from the root of a file structure to a product, and to the file of a rep node: the instance name and the
    // file name of each step, root first, the root itself left out, and the root's counterpart on the other side: the
    // rep node of its file in a PDM window, and the root product of its document in session. Of a relation with several
    // instance names the first one counts. Fails quietly when there is no such counterpart, and for a rep node that is
    // not below a chain of files.
    static HRESULT GetPathToRootInstanceNames(const CATIProduct_var& spIProduct,
                                              CATListValCATUnicodeString* pInstanceNames,
                                              CATListValCATUnicodeString* pFileNames,
                                              QTBIRepNode_var* pspIRepNodeOnRoot);
    static HRESULT GetPathToRootInstanceNames(const QTBIRepNode_var& spIRepNode,
                                              CATListValCATUnicodeString* pInstanceNames,
                                              CATListValCATUnicodeString* pFileNames,
                                              CATIProduct_var* pspIProductOnDocRootProduct);

    // The nodes at the other end of such a way: from the root on, the children with the instance name and the file name
    // of each of the first stepCount steps. Fails quietly when there are none.
    static HRESULT GetTargetChildFileNodes(const QTBIRepNode_var& spIRepNodeOnRoot,
                                           const CATListValCATUnicodeString& InstanceNames,
                                           const CATListValCATUnicodeString& FileNames, int stepCount,
                                           CATListValCATBaseUnknown_var* pTargetNodes);
    static HRESULT GetTargetChildFileNodes(const CATIProduct_var& spIProductOnRoot,
                                           const CATListValCATUnicodeString& InstanceNames,
                                           const CATListValCATUnicodeString& FileNames, int stepCount,
                                           CATListValCATBaseUnknown_var* pTargetNodes);
};
