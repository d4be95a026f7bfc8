#pragma once

#include "CATListValCATBaseUnknown_var.h"
#include "QTBBaseLibExport.h"

class CATFrmWindow;
class CATUnicodeString;
class QTBIRepNode;
class QTBIRepNodeCont;
using QTBIRepNode_var = CATInterface_var<QTBIRepNode>;
using QTBIRepNodeCont_var = CATInterface_var<QTBIRepNodeCont>;

// What the rep nodes of a PDM window stand for, and the refresh of the window. Flags and texts answer FALSE and "" for
// a rep node that stands for something else or has lost its PDM node; operations fail for an empty handle and null
// flags.
class QTBBASELIB_API QTBRepTreeUtil
{
public:
    // Whether the node stands for a part; its part number, empty when it has none. The text may be null.
    static HRESULT RepresentsPdmPartNode(const QTBIRepNode_var& spIRepNode, unsigned char* pbRepresentsPdmPartNode,
                                         CATUnicodeString* pusPartNumber);

    static HRESULT RepresentsPdmPartPartRelationNode(const QTBIRepNode_var& spIRepNode,
                                                     unsigned char* pbRepresentsPdmPartPartRelationNode);

    // Whether the node stands for a file of the CAD system; its file name and file type. The texts may be null.
    static HRESULT RepresentsCatiaFileNode(const QTBIRepNode_var& spIRepNode, unsigned char* pbRepresentsCatiaFileNode,
                                           CATUnicodeString* pusFileName, CATUnicodeString* pusFileType);

    // The sub-structure one level below a part, or below the part of a relation: the rep nodes of the part-to-part
    // relations and, parallel to them, those of the parts. Each list may be null; both are emptied first.
    static HRESULT GetAllDirectSubStructureNodes(const QTBIRepNode_var& spIRepNode,
                                                 CATListValCATBaseUnknown_var* pListOfRelRepNodes,
                                                 CATListValCATBaseUnknown_var* pListOfPartRepNodes);

    // The same for all levels: the nodes of one part's level, then the first child's sub-structure, then the second's.
    static HRESULT GetAllSubStructureNodes(const QTBIRepNode_var& spIRepNode,
                                           CATListValCATBaseUnknown_var* pListOfRelRepNodes,
                                           CATListValCATBaseUnknown_var* pListOfPartRepNodes);

    // Whether the CAD file that the node hangs below (the next file node above it) is loaded in the session.
    static HRESULT ParentCatDocObjIsInSession(const QTBIRepNode_var& spIRepNode, unsigned char* pbIsInSession);

    // Refreshes a PDM window's tree: everything on display is asked for its text and children again. With
    // bTakeRootsAnew, or when the tree shows no more than placeholders, its roots are those of the document's rep
    // node container. With bActivateWindow the window becomes the current one. Fails for a null window; a window
    // without a tree or without a PDM document has nothing to refresh.
    static HRESULT UpdateQtbWindow(CATFrmWindow* pFrmWindow, const unsigned char& bTakeRootsAnew,
                                   const unsigned char& bActivateWindow);

    // The rep node container of a PDM document, its root container. E_FAIL for any other component and for a document
    // whose initialisation failed.
    static HRESULT GetRepNodeContOfDocument(const CATBaseUnknown_var& spDocument, QTBIRepNodeCont_var* pspIRepNodeCont);

    // The rep node container of the document that a window shows. E_FAIL for a window that shows no PDM document.
    static HRESULT GetRepNodeContOfWindow(CATFrmWindow* pFrmWindow, QTBIRepNodeCont_var* pspIRepNodeCont);
};
