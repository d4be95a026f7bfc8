#pragma once

#include "QTBENodeAttributesOnNode.h"
#include "QTBENodeOnNode.h"
#include "QTBENodeRelationsOnNode.h"
#include "QTBFault.h"
#include "QTBTestLateType.h"
#include "TIEQTBINode.h"
#include "TIEQTBINodeAttributes.h"
#include "TIEQTBINodeRelations.h"

// The extensions of a node with the operations that nodes use of one another, made to fail on demand (see QTBFault).

class QTBFailingNodeRelations : public QTBENodeRelationsOnNode
{
public:
    QTB_FAULTY_OPERATION(QTBENodeRelationsOnNode, RightNodeExists)
    QTB_FAULTY_OPERATION(QTBENodeRelationsOnNode, LeftNodeExists)
    QTB_FAULTY_OPERATION(QTBENodeRelationsOnNode, AddRightNode)
    QTB_FAULTY_OPERATION(QTBENodeRelationsOnNode, AddLeftNode)
    QTB_FAULTY_OPERATION(QTBENodeRelationsOnNode, RemoveRightNode)
    QTB_FAULTY_OPERATION(QTBENodeRelationsOnNode, RemoveLeftNode)
    QTB_FAULTY_OPERATION(QTBENodeRelationsOnNode, RemoveAllRels)
};

class QTBFailingNodeAttributes : public QTBENodeAttributesOnNode
{
public:
    QTB_FAULTY_OPERATION(QTBENodeAttributesOnNode, GetKey)
    QTB_FAULTY_OPERATION(QTBENodeAttributesOnNode, GetXmlElement)
};

class QTBFailingNodeIdentity : public QTBENodeOnNode
{
public:
    QTB_FAULTY_OPERATION(QTBENodeOnNode, GetNodeDescriptionString)
    QTB_FAULTY_OPERATION(QTBENodeOnNode, GetPdmClass)
};

// A node like any other, until it is told to fail.
inline CATBaseUnknown_var CreateFailingNode()
{
    static QTBTestLateType s_LateType("TestFailingNode");
    static const bool s_bIsRegistered = [] {
        s_LateType.Register<TIEQTBINodeRelations, QTBINodeRelations, QTBFailingNodeRelations>()
            .Register<TIEQTBINodeAttributes, QTBINodeAttributes, QTBFailingNodeAttributes>()
            .Register<TIEQTBINode, QTBINode, QTBFailingNodeIdentity>();
        return true;
    }();
    static_cast<void>(s_bIsRegistered);
    return s_LateType.Create();
}

// A component that answers no interface of a node.
inline CATBaseUnknown_var CreateNoNode()
{
    static const QTBTestLateType s_LateType("TestNoNode");
    return s_LateType.Create();
}

// A component that has only the relations of a node.
inline CATBaseUnknown_var CreateNodeWithoutAttributes()
{
    static QTBTestLateType s_LateType("TestNodeWithoutAttributes");
    static const QTBTestLateType& s_Registered =
        s_LateType.Register<TIEQTBINodeRelations, QTBINodeRelations, QTBENodeRelationsOnNode>();
    return s_Registered.Create();
}

// A component that has only the attributes of a node.
inline CATBaseUnknown_var CreateNodeWithoutRelations()
{
    static QTBTestLateType s_LateType("TestNodeWithoutRelations");
    static const QTBTestLateType& s_Registered =
        s_LateType.Register<TIEQTBINodeAttributes, QTBINodeAttributes, QTBENodeAttributesOnNode>();
    return s_Registered.Create();
}
