#pragma once

#include "CATInterface_var.h"
#include "CATUnicodeString.h"
#include "QTBBaseLibExport.h"

class CATDocument;
class CATFrmEditor;
class CATIProduct;
using CATIProduct_var = CATInterface_var<CATIProduct>;

// Products of the CAD session: references, instances and the documents behind them. All of it is read from the products
// and their links to documents (CATIProduct, CATIPrdLink, CATIPrdProperties).
//
// Operations fail, quietly, for an empty handle and for a null out-pointer. bReportIfNone makes the absence of what is
// asked for an error with a message for the user instead of a quiet failure.
class QTBBASELIB_API QTBPsnTreeUtil
{
public:
    // The reference of an instance, a reference itself. bLoadDocument loads its document when only its shape is in
    // session. Fails for a broken link and for a document that cannot be loaded.
    static HRESULT GetReferencePsnNode(const CATIProduct_var& spIProduct, CATIProduct_var* pspIProductOnReference,
                                       const unsigned char& bLoadDocument, const unsigned char& bReportIfNone);

    // The two texts that relate an instance to the PDM system: the key of the relation that it was created from, and
    // the name that it had then. An instance that was created in the CAD system has no key, and its own name. Fails
    // for a product that is no instance.
    static HRESULT GetInstanceAttributes(const CATIProduct_var& spIProductOnInstance, CATUnicodeString* pusRelationKey,
                                         CATUnicodeString* pusInstanceName);
    // Writes them; called when an instance is created from the PDM system. Fails for a product that is no instance and
    // for an empty text.
    static HRESULT SetInstanceAttributes(const CATIProduct_var& spIProductOnInstance,
                                         const CATUnicodeString& usRelationKey, const CATUnicodeString& usInstanceName);
    // Names under which they are kept as properties of the instance.
    static const char* GetRelationKeyProperty() { return "QtbRelationKey"; }
    static const char* GetInstanceNameProperty() { return "QtbInstanceName"; }

    // Whether the product is an embedded component, defined in the document of the product above it.
    static HRESULT IsEmbeddedComponentNode(const CATIProduct_var& spIProduct, unsigned char* pbIsEmbeddedComponent);

    // The document that holds the product's reference; that of its shape while nothing else is in session, unless
    // bLoadDocument has it loaded. No reference is added. Fails for a broken link and for a closed document, with
    // *ppDocument null.
    static HRESULT GetDocumentPtrFromPsnNode(const CATIProduct_var& spIProduct, CATDocument** ppDocument,
                                             const unsigned char& bLoadDocument, const unsigned char& bReportIfNone);

    // The document that holds nothing but the product's shape. As above.
    static HRESULT GetShapeRepDocumentPtrFromPsnNode(const CATIProduct_var& spIProduct, CATDocument** ppDocument,
                                                     const unsigned char& bReportIfNone);

    // The editor of the document in whose tree the product stands. Fails, with *ppFrmEditor null, when that document
    // has no editor.
    static HRESULT GetFrmEditorPtrFromPsnNode(const CATIProduct_var& spIProduct, CATFrmEditor** ppFrmEditor);
};
