#pragma once

#include "CATBaseUnknown.h"
#include "CATLateType.h"

// Base of the implementation classes of the library's late types. Such a class holds no data: what a component is and
// does comes from the extensions of its late type. It names its late type and that one's base:
//
//     class QTBPdmNode : public QTBImplementation<QTBPdmNode>
//     {
//     public:
//         static constexpr const char* LATE_TYPE = "QTBPdmNode";
//         static constexpr const char* LATE_TYPE_BASE = "QTBNode";
//     };
template <class Class>
class QTBImplementation : public CATBaseUnknown
{
public:
    QTBImplementation() : CATBaseUnknown(GetLateType()) {}

    // The late type, known to the object modeler with its base from the first call on; the library calls it when it is
    // loaded.
    static const CATLateType& GetLateType()
    {
        static const CATLateType& s_LateType = CATLateType::Declare(Class::LATE_TYPE, Class::LATE_TYPE_BASE);
        return s_LateType;
    }
};
