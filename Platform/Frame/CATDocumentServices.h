#pragma once

#include "CATListValCATBaseUnknown_var.h"
#include "CATUnicodeString.h"

class CATDocument;

// The documents of the session. The session holds each of them until it is removed or its editor is closed.
class PLATFORM_API CATDocumentServices
{
public:
    // A new document of the type: a late type, or a document type whose alias (CATIDocAlias) is one. Initialises it
    // (CATInit). A type with a CATICreateInstance factory makes the component itself. E_FAIL for a type that is no
    // document type, that is one that has no CATInit.
    static HRESULT New(const CATUnicodeString& type, CATBaseUnknown_var* pspDocument);

    // Loads a document of the type from a file (CATIPersistent::Load). A document that is in session already is given
    // as it is. Fails as New does, and for a type without CATIPersistent.
    static HRESULT Open(const CATUnicodeString& type, const CATUnicodeString& storageName, unsigned char bReadOnly,
                        CATBaseUnknown_var* pspDocument);

    // Has the document save itself under its own name or another one (CATIPersistent). Fails for a document that does
    // not answer the interface.
    static HRESULT Save(CATDocument& document);
    static HRESULT SaveAs(CATDocument& document, const CATUnicodeString& storageName);

    // The document in session with that storage name. E_FAIL, with *ppDocument null, when there is none. No reference
    // is added.
    static HRESULT GetDocumentInSession(const CATUnicodeString& storageName, CATDocument** ppDocument);

    // Whether a document of the session is stored under that file name, in whatever folder.
    static bool FileIsInSession(const CATUnicodeString& fileName);

    // The documents of the session, in the order in which they were opened.
    static const CATListValCATBaseUnknown_var& GetDocuments();

    // Takes a document into the session that was made elsewhere, behind the others. Presence is no error.
    static void Add(CATDocument& document);

    // Closes the document: its editor with all windows, then its place in the session, unless other documents use it
    // (CATDocument::LeavesSession).
    static void Remove(CATDocument& document);

    // Closes all documents of the session. Those that others use go with these.
    static void RemoveAll();

    // Lets go of a document whose editor was closed, unless other documents use it; called by the layout. Absence is no
    // error.
    static void Forget(CATDocument* pDocument);
};
