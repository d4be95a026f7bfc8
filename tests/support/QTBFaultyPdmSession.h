#pragma once

#include <cstdlib>
#include <iostream>
#include <list>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "CATInstantiateComponent.h"
#include "QTBDiagnosis.h"
#include "QTBFaultyExtensions.h"
#include "QTBTestSession.h"

// The faulty extensions of QTBFaultyExtensions.h with the further operations that the nodes of the PDM graph use of one
// another.

class QTBFaultyPdmAttributes : public QTBFaultyAttributes
{
public:
    QTB_FAULTY_OPERATION(QTBFaultyAttributes, GetAllAttributeNames)
};

class QTBFaultyPdmRelations : public QTBFaultyRelations
{
public:
    QTB_FAULTY_OPERATION(QTBFaultyRelations, GetLeftRelationsCount)
    QTB_FAULTY_OPERATION(QTBFaultyRelations, GetAllLeftRelations)
    QTB_FAULTY_OPERATION(QTBFaultyRelations, GetLeftRelationNames)
    QTB_FAULTY_OPERATION(QTBFaultyRelations, GetRightRelationNames)
};

class QTBFaultyGraphObjNode : public QTBFaultyPdmObjNode
{
public:
    QTB_FAULTY_OPERATION(QTBFaultyPdmObjNode, ToXml)
};

class QTBFaultyGraphRelNode : public QTBFaultyPdmRelNode
{
public:
    QTB_FAULTY_OPERATION(QTBFaultyPdmRelNode, GetRelationAttr)
    QTB_FAULTY_OPERATION(QTBFaultyPdmRelNode, ToXml)
};

class QTBFaultyGraph : public QTBFaultyPdmNodeCont
{
public:
    QTB_FAULTY_OPERATION(QTBFaultyPdmNodeCont, RemoveNodeFromPdmGraph)
};

// The extension behind an interface object, for operations that are none of the interface.
template <class Extension, template <class...> class Tie, class Interface>
Extension* QTBExtensionBehind(const CATInterface_var<Interface>& spInterface)
{
    auto* pTie = dynamic_cast<Tie<CATDataTie<Interface, Extension>>*>(spInterface.Get());
    return pTie != nullptr ? pTie->Target() : nullptr;
}

// A new component of that late type that no container knows.
inline CATBaseUnknown_var QTBCreateLoose(const char* lateType)
{
    void* pNode = nullptr;
    EXPECT_THAT(::CATInstantiateComponent(lateType, CLSID_CATBaseUnknown, &pNode), Succeeds()) << lateType;
    return CATBaseUnknown_var::Adopt(static_cast<CATBaseUnknown*>(pNode));
}

// Session in which the operations of nodes and container fail on demand (see QTBFault).
class QTBFaultyPdmSession : public QTBTestSession
{
protected:
    void SetUp() override
    {
        Replace<TIEQTBINodeAttributes, QTBINodeAttributes, QTBFaultyPdmAttributes>("QTBNode");
        Replace<TIEQTBINodeRelations, QTBINodeRelations, QTBFaultyPdmRelations>("QTBNode");
        Replace<TIEQTBIPdmObjNode, QTBIPdmObjNode, QTBFaultyGraphObjNode>("QTBPdmObjNode");
        Replace<TIEQTBIPdmRelNode, QTBIPdmRelNode, QTBFaultyGraphRelNode>("QTBPdmRelNode");
        Replace<TIEQTBIPdmNodeCont, QTBIPdmNodeCont, QTBFaultyGraph>("QTBPdmNodeCont");
        QTBTestSession::SetUp();
    }

    void TearDown() override
    {
        QTBTestSession::TearDown();
        m_Replaced.clear();
    }

    // Reads objects and relations in one action, the relations so that they are linked in this order: those of an
    // answer are linked from the last to the first.
    static void UpdateInOrder(const std::string& objects, const std::vector<std::string>& relations)
    {
        std::string items = objects;
        for (auto relation = relations.rbegin(); relation != relations.rend(); ++relation) {
            items += *relation;
        }
        Update(items);
    }

private:
    template <template <class...> class Tie, class Interface, class Extension>
    void Replace(const char* lateType)
    {
        m_Replaced.emplace_back(lateType, Interface::MetaObject(), QTBFactoryOf<Tie, Interface, Extension>());
    }

    std::list<QTBReplacedExtension> m_Replaced;
};

// For a process of its own that has loaded no schema: ends it with 0 when the operation fails with just these
// diagnoses, and with 1, saying what came instead, when it does not.
//
//     ::testing::FLAGS_gtest_death_test_style = "threadsafe";
//     EXPECT_EXIT(QTBExitWhenDiagnosed([] { return ...; }, {Call("...")}), ::testing::ExitedWithCode(0), "");
template <class Operation>
[[noreturn]] void QTBExitWhenDiagnosed(Operation operation, const std::vector<std::string>& expected)
{
    std::vector<std::string> diagnoses;
    bool failed = false;
    {
        const DebugCapture capture;
        failed = FAILED(operation());
        diagnoses = QTBDiagnosis::DiagnosesIn(capture);
    }
    if (failed && diagnoses == expected) {
        std::_Exit(0);
    }
    std::cerr << (failed ? "failed" : "succeeded") << " with:\n";
    for (const std::string& diagnosis : diagnoses) {
        std::cerr << diagnosis << "\n";
    }
    std::cerr.flush();
    std::_Exit(1);
}
