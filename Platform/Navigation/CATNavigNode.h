#pragma once

#include "CATInterface_var.h"

// Navigation node: a component that stands for a displayed object in one navigation tree. Its late type is that of the
// object with "_node" behind it, so that extensions of that late type decide how the objects look (CATINavigModify); it
// derives from the node type of the object's base. At the end of every chain stands ROOT_LATE_TYPE, on which nodes
// answer CATINavigModify and CATIGraphNode.
class PLATFORM_API CATNavigNode : public CATBaseUnknown
{
public:
    static constexpr const char* ROOT_LATE_TYPE = "CATBaseUnknown_node";

    // A new navigation node for the object, which is not empty.
    static CATBaseUnknown_var Create(const CATBaseUnknown_var& spObject);

private:
    explicit CATNavigNode(const CATLateType& lateType) : CATBaseUnknown(lateType) {}
};
