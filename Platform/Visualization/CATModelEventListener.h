#pragma once

#include "CATInterface_var.h"

// What can happen to an object.
enum class CATModelEvent
{
    // Its data, and with them its representation, are other ones.
    Modified,
    // Only its visual properties are.
    VisPropertiesChanged,
    // It leaves the model.
    Deleted
};

// Is told the events of the objects to which it is connected (CATIModelEvents).
class CATModelEventListener
{
public:
    virtual ~CATModelEventListener() = default;

    virtual void OnModelEvent(const CATBaseUnknown_var& spObject, CATModelEvent event) = 0;
};
