#pragma once

#include "CATBaseUnknown.h"
#include "CATUnicodeString.h"

// Implementation object of a document component. Its late type, which is the document's type, decides how the document
// is initialised, edited and saved (CATInit, CATIEditor, CATIPersistent). Made by CATDocumentServices.
class PLATFORM_API CATDocument : public CATBaseUnknown
{
public:
    explicit CATDocument(const CATLateType& lateType) : CATBaseUnknown(lateType) {}

    // The component seen as a document; null for a null pointer and for a component that is no document.
    static CATDocument* FromComponent(const CATBaseUnknown* pObject);

    // Path of the document's file; empty for a document that was never saved.
    const CATUnicodeString& GetStorageName() const { return m_StorageName; }
    void SetStorageName(const CATUnicodeString& storageName) { m_StorageName = storageName; }

    // Whether the document has changes that are not saved: those it was told of, or those that it knows of itself
    // (CATIPersistent::Dirty).
    bool IsDirty();
    void SetDirty(unsigned char bDirty) { m_bDirty = bDirty; }

private:
    CATUnicodeString m_StorageName;
    unsigned char m_bDirty = 0;
};
