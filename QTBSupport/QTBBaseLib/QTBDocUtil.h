#pragma once

#include "CATInterface_var.h"
#include "QTBBaseLibExport.h"

class CATDocument;
class CATIEditor;
class CATIProduct;
class CATUnicodeString;
class QTBIQtbFrmWindow;
using CATIProduct_var = CATInterface_var<CATIProduct>;
using CATIEditor_var = CATInterface_var<CATIEditor>;
using QTBIQtbFrmWindow_var = CATInterface_var<QTBIQtbFrmWindow>;

// Documents of the session.
class QTBBASELIB_API QTBDocUtil
{
public:
    // Opens a PDM document with its window, which becomes the current one and shows the default root node. The window
    // object and the document's editor interface are the answer; each pointer may be null. When the window is closed,
    // the document's rep node container is cleaned up. Fails when the application has no layout or when no library is
    // loaded that implements the document.
    static HRESULT CreateNewQtbDocument(QTBIQtbFrmWindow_var* pspIQtbFrmWindow, CATIEditor_var* pspIEditor);

    // Closes every PDM document with its windows. Called at the end of the session.
    static void CloseAllQtbDocuments();

    // The product at the top of a document in session with that part number; of several that of the document that was
    // opened first. E_FAIL when there is none.
    static HRESULT GetPsnDocumentInSession(const CATUnicodeString& usPartNumber, CATIProduct_var* pspIProductOnRoot);

    // Whether some document in session has a product at its top.
    static bool HasPsnDocumentInSession();

    // The product at the top of a document. E_FAIL for a document without product.
    static HRESULT GetDocumentRootProduct(const CATDocument& document, CATIProduct_var* pspIProductOnRoot);

    // The document that holds a product's reference, as it is in session: while only the shape is there that of the
    // shape, for an embedded component that of the product above it. A product without one has that of the root product
    // with the part number, which may be empty. No reference is added. E_FAIL, with *ppDocument null, when there is
    // none.
    static HRESULT CmiGetDocForProduct(const CATIProduct_var& spIProduct, const CATUnicodeString& usPartNumber,
                                       CATDocument** ppDocument);

    // Whether a file differs from what the PDM system holds: the document with that path has changes that are not
    // saved, or the file on disk is another one than the one exchanged with the PDM system (FileWasExchanged), or there
    // is a file that was not exchanged in this session. A file that is not on disk is no difference.
    //   bIgnoreDocuments  looks at the file only, not at the documents in session
    //   bCompareContent   a file that was only written anew, with the same content, is no difference
    // Fails for an empty path and, with an error that names it, for a file that cannot be read.
    static HRESULT DocumentNeedsToBeSavedInPdm(const CATUnicodeString& usPath, unsigned char* pbNeedsToBeSaved,
                                               const unsigned char& bIgnoreDocuments,
                                               const unsigned char& bCompareContent);

    // The file with that path is as the PDM system holds it: it was just fetched from there or stored there. Fails as
    // above, and for a file that is not there.
    static HRESULT FileWasExchanged(const CATUnicodeString& usPath);
};
