#pragma once

#include "CATListPtr.h"
#include "CATString.h"
#include "PlatformExport.h"

// A form in which objects are on the clipboard. Formats are registered by name; there is one object for each name, to
// the end of the program.
class PLATFORM_API CATFormat
{
public:
    CATFormat(const CATFormat&) = delete;
    CATFormat& operator=(const CATFormat&) = delete;

    // The format of that name, registered on first use; null for an empty name.
    static CATFormat* GetRegisteredFormat(const CATString& name);

    const CATString& GetName() const { return m_Name; }

    // Whether the name is that of a late type whose components are on the clipboard as they are (SpecBindNativeFormat).
    bool IsNative() const;

private:
    explicit CATFormat(const CATString& name) : m_Name(name) {}

    CATString m_Name;
};

using CATListPtrCATFormat = CATListPtr<CATFormat>;
