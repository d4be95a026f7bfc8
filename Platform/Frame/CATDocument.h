#pragma once

#include <cstdint>
#include <string_view>

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

    // Name of the document's type.
    CATUnicodeString GetType() const { return IsA(); }

    // Path of the document's file; empty for a document that was never saved.
    const CATUnicodeString& GetStorageName() const { return m_StorageName; }
    void SetStorageName(const CATUnicodeString& storageName);

    // The name that is shown for the document: the one set, else the name of its file without directory.
    CATUnicodeString GetDisplayName() const;
    void SetDisplayName(const CATUnicodeString& displayName) { m_DisplayName = displayName; }

    // Whether the document has changes that are not saved: those it was told of, or those that it knows of itself
    // (CATIPersistent::Dirty).
    bool IsDirty();
    void SetDirty(unsigned char bDirty) { m_bDirty = bDirty; }

    // The document is about to leave the session, because it or its editor was closed. Says whether it does: one that
    // others use stays. What it shares with others is let go of here. Called by CATDocumentServices.
    virtual bool LeavesSession() { return true; }

    // What follows the last slash of a path.
    static std::string_view GetFileName(const CATUnicodeString& storageName);

private:
    friend class CATDocumentRegister;

    CATUnicodeString m_StorageName;
    CATUnicodeString m_DisplayName;
    // Place in the order of the session's documents, 0 for a document that is not in session.
    std::uint64_t m_SessionNumber = 0;
    unsigned char m_bDirty = 0;
};
