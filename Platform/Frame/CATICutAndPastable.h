#pragma once

#include "CATFormat.h"
#include "CATInterface_var.h"
#include "CATListValCATBaseUnknown_var.h"

inline constexpr IID IID_CATICutAndPastable{"CATICutAndPastable"};

// What the clipboard may do with an object, see CATClipboard. Lists of formats are new ones that the caller owns, the
// best format first; null stands for none. Operations that answer with a number answer 0 when they are done.
class PLATFORM_API CATICutAndPastable : public CATBaseUnknown
{
    CATDeclareInterface(CATICutAndPastable, CATBaseUnknown)

public:
    // Copying. The formats in which the object can be taken; the further objects that have to be copied with those of
    // the list, which are added to it; what the clipboard is to hold for the object, empty for nothing.
    virtual CATListPtrCATFormat* ListExtractFormats() = 0;
    virtual int BoundaryExtract(CATListValCATBaseUnknown_var& ioObjects, const CATFormat* pFormat) = 0;
    virtual CATBaseUnknown_var Extract(const CATFormat* pFormat) = 0;

    // Pasting onto the object. The formats that it takes; takes over what the clipboard holds, and the answer is what
    // came to be of it. Create makes an object of its own for a content that comes from outside, Update takes over a
    // content that has changed there.
    virtual CATListPtrCATFormat* ListPasteFormats() = 0;
    virtual CATListValCATBaseUnknown_var Paste(const CATListValCATBaseUnknown_var& objects,
                                               const CATFormat* pFormat) = 0;
    virtual int Create(const CATBaseUnknown_var& spContent, const CATFormat* pFormat) = 0;
    virtual int Update(const CATBaseUnknown_var& spContent, const CATFormat* pFormat) = 0;

    // The same with a link to the objects on the clipboard instead of a copy.
    virtual CATListPtrCATFormat* ListLinkFormats() = 0;
    virtual CATListValCATBaseUnknown_var Link(const CATListValCATBaseUnknown_var& objects,
                                              const CATFormat* pFormat) = 0;

    // Deleting. The further objects that have to go with those of the list, which are added to it; takes the object
    // away.
    virtual CATListPtrCATFormat* ListRemoveFormats() = 0;
    virtual int BoundaryRemove(CATListValCATBaseUnknown_var& ioObjects, const CATFormat* pFormat) = 0;
    virtual int Remove(const CATFormat* pFormat) = 0;
};

using CATICutAndPastable_var = CATInterface_var<CATICutAndPastable>;
