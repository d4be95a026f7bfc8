#pragma once

#include "CATBaseUnknown.h"
#include "CATInterface_var.h"
#include "CATListPtr.h"

class CATUnicodeString;

// List of components, none of which the list owns.
using _SEQUENCE_CATBaseUnknown_ptr = CATListPtr<CATBaseUnknown>; // NOLINT(bugprone-reserved-identifier)

inline constexpr IID IID_CATIContainer{"CATIContainer"};

// A component that holds other components.
class PLATFORM_API CATIContainer : public CATBaseUnknown
{
    CATDeclareInterface(CATIContainer, CATBaseUnknown)

public:
    // The members that answer the interface of that name.
    virtual _SEQUENCE_CATBaseUnknown_ptr ListMembers(const char* interfaceName) = 0;

    // The member of that name, with a reference; null when there is none.
    virtual CATBaseUnknown* FindMember(const CATUnicodeString& name) = 0;
};

using CATIContainer_var = CATInterface_var<CATIContainer>;
