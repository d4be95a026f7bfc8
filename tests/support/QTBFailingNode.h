#pragma once

#include <string>
#include <string_view>

#include "QTBENodeAttributesOnNode.h"
#include "QTBENodeOnNode.h"
#include "QTBENodeRelationsOnNode.h"
#include "QTBTestLateType.h"
#include "TIEQTBINode.h"
#include "TIEQTBINodeAttributes.h"
#include "TIEQTBINodeRelations.h"

// Makes one operation of the failing nodes below fail, without error, as long as it lives.
class QTBFailAt
{
public:
    explicit QTBFailAt(const char* operation) : m_Former(s_Operation) { s_Operation = operation; }
    QTBFailAt(const QTBFailAt&) = delete;
    QTBFailAt& operator=(const QTBFailAt&) = delete;
    ~QTBFailAt() { s_Operation = m_Former; }

    static bool Is(std::string_view operation) { return s_Operation == operation; }

private:
    std::string m_Former;
    inline static std::string s_Operation;
};

#define QTB_MAY_FAIL(Base, Operation)                                                                                  \
    template <class... Arguments>                                                                                      \
    HRESULT Operation(Arguments&&... arguments)                                                                        \
    {                                                                                                                  \
        return QTBFailAt::Is(#Operation) ? E_FAIL : Base::Operation(arguments...);                                     \
    }

class QTBFailingNodeRelations : public QTBENodeRelationsOnNode
{
public:
    QTB_MAY_FAIL(QTBENodeRelationsOnNode, RightNodeExists)
    QTB_MAY_FAIL(QTBENodeRelationsOnNode, LeftNodeExists)
    QTB_MAY_FAIL(QTBENodeRelationsOnNode, AddRightNode)
    QTB_MAY_FAIL(QTBENodeRelationsOnNode, AddLeftNode)
    QTB_MAY_FAIL(QTBENodeRelationsOnNode, RemoveRightNode)
    QTB_MAY_FAIL(QTBENodeRelationsOnNode, RemoveLeftNode)
    QTB_MAY_FAIL(QTBENodeRelationsOnNode, RemoveAllRels)
};

class QTBFailingNodeAttributes : public QTBENodeAttributesOnNode
{
public:
    QTB_MAY_FAIL(QTBENodeAttributesOnNode, GetKey)
    QTB_MAY_FAIL(QTBENodeAttributesOnNode, GetXmlElement)
};

class QTBFailingNodeIdentity : public QTBENodeOnNode
{
public:
    QTB_MAY_FAIL(QTBENodeOnNode, GetNodeDescriptionString)
    QTB_MAY_FAIL(QTBENodeOnNode, GetPdmClass)
};

#undef QTB_MAY_FAIL

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
