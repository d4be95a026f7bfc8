#pragma once

#include "CATBaseUnknown.h"
#include "CATInterface_var.h"

class CATUnicodeString;

inline constexpr IID IID_CATIPersistent{"CATIPersistent"};

// Saving and loading of a document.
class PLATFORM_API CATIPersistent : public CATBaseUnknown
{
    CATDeclareInterface(CATIPersistent, CATBaseUnknown)

public:
    // Whether the document asks to be saved.
    virtual unsigned char Dirty() = 0;
    virtual void Save() = 0;
    // bBecameCurrent: whether the document goes on under the new name.
    virtual void SaveAs(const CATUnicodeString& storageName, unsigned char bBecameCurrent) = 0;
    // The forms that write to or read from storage bytes.
    virtual void SaveAs_B(void* pStorage) = 0;
    virtual void Load(const CATUnicodeString& storageName, unsigned char bReadOnly) = 0;
    virtual void Load_B(void* pStorage) = 0;
};

using CATIPersistent_var = CATInterface_var<CATIPersistent>;
