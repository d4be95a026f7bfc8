#pragma once

#include "CATFormat.h"
#include "CATListValCATBaseUnknown_var.h"

// CATICutAndPastable on the late type QTBRepNode: a rep node is copied as a "QTBRepNode" in name only, and nothing that
// the clipboard does changes the tree. Every list of formats is a new one with that one format, which the caller owns.
class QTBECutAndPastableOnRepNode : public CATBaseUnknown
{
public:
    CATListPtrCATFormat* ListExtractFormats();
    // Nothing is added; 0.
    int BoundaryExtract(CATListValCATBaseUnknown_var& ioObjects, const CATFormat* pFormat);
    // An empty handle.
    CATBaseUnknown_var Extract(const CATFormat* pFormat);

    CATListPtrCATFormat* ListPasteFormats();
    // An empty list.
    CATListValCATBaseUnknown_var Paste(const CATListValCATBaseUnknown_var& objects, const CATFormat* pFormat);
    // Nothing is done; 0.
    int Create(const CATBaseUnknown_var& spContent, const CATFormat* pFormat);
    int Update(const CATBaseUnknown_var& spContent, const CATFormat* pFormat);

    CATListPtrCATFormat* ListLinkFormats();
    // An empty list.
    CATListValCATBaseUnknown_var Link(const CATListValCATBaseUnknown_var& objects, const CATFormat* pFormat);

    CATListPtrCATFormat* ListRemoveFormats();
    // Nothing is added or done; 0.
    int BoundaryRemove(CATListValCATBaseUnknown_var& ioObjects, const CATFormat* pFormat);
    int Remove(const CATFormat* pFormat);
};
