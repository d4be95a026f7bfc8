#pragma once

#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "CATIProduct.h"
#include "QTBConstants.h"
#include "QTBFakeCommunication.h"
#include "QTBFaultPoint.h"
#include "QTBINode.h"
#include "QTBINodeAttributes.h"
#include "QTBINodeRelations.h"
#include "QTBIRepNode.h"
#include "QTBIRepNodeCont.h"
#include "QTBNodeRelationInfo.h"
#include "QTBPromises.h"
#include "QTBTestSession.h"
#include "QTBTestWindow.h"

// One operation, and what becomes of it when something that it uses goes wrong.
//
// Unless the scenario says otherwise it fails, with the error of the first check that noticed; that check's text ends
// with the name of what went wrong. Calls are named as "QTBINode::GetPdmClass" or "QTBSchemaUtil::GetKeyAttr".
struct QTBScenario
{
    using Names = std::set<std::string>;

    std::string name;
    std::string subject;
    std::string second = {};
    // That of the subject, unless the operation is none of a subject's.
    std::string lateType = {};
    std::function<HRESULT(const CATBaseUnknown_var& spSubject)> run;

    // Calls whose failure changes nothing in the result, at one place at least.
    Names tolerated = {};
    // Calls whose failure is the expected absence of something: the operation fails without an error.
    Names absent = {};
    // Calls whose failure is told by a check with another name than theirs.
    Names renamed = {};
    // It stops where it fails and takes nothing back, so that links may stand half made; the session stays usable.
    bool bStopsHalfWay = false;
    // The operation changes the session, so that each run needs a new one.
    bool bChanges = false;
    // It has a neutral answer for every failure.
    bool bNeverFails = false;
    // What it makes of a failure depends on the place: it goes on with the next item, with what it knows, or not at
    // all.
    bool bDepends = false;
    QTBPromises promises = {};

    QTBScenario& Tolerates(const Names& names)
    {
        tolerated = names;
        return *this;
    }
    QTBScenario& IsAbsentWithout(const Names& names)
    {
        absent = names;
        return *this;
    }
    QTBScenario& Renames(const Names& names)
    {
        renamed = names;
        return *this;
    }
    QTBScenario& StopsHalfWay()
    {
        bStopsHalfWay = true;
        bChanges = true;
        return *this;
    }
    QTBScenario& Changes()
    {
        bChanges = true;
        return *this;
    }
    // Another subject that the operation is given, m_spSecond.
    QTBScenario& With(const char* subjectName)
    {
        second = subjectName;
        return *this;
    }
    QTBScenario& Depends()
    {
        bDepends = true;
        return *this;
    }
    QTBScenario& NeverFails()
    {
        bNeverFails = true;
        return *this;
    }
    template <class List>
    QTBScenario& Empties(List& list)
    {
        promises.Empties(list);
        return *this;
    }
    template <class List>
    QTBScenario& Appends(List& list)
    {
        promises.Appends(list);
        return *this;
    }
    template <class Value>
    QTBScenario& Keeps(Value& value)
    {
        promises.Keeps(value);
        return *this;
    }
    template <class Value>
    QTBScenario& KeepsWithout(const char* call, Value& value)
    {
        promises.KeepsWithout(call, value);
        return *this;
    }
    template <class Handle>
    QTBScenario& Resets(Handle& handle)
    {
        promises.Resets(handle);
        return *this;
    }
};

// A session with everything in it: a graph of parts, files and a document, a PDM window and a container without window
// that show it, the products of the parts with a window of their own, a PDM system.
//
//     A (part, number N1) -AB (B.1)-> B (N2) -BC (C.1)-> C (N3);  FA, FB, FC their files, with FAB between FA and FB;
//     D a document of A; E an embedded object of A
class QTBFaultSession : public QTBTestSession
{
protected:
    class FaultyProducts;

    void SetUp() override;
    void TearDown() override;

    // Sessions that do not work with the BOM part structure.
    virtual bool UsesBomPartStructure() const { return true; }

    // What a test holds on to of the session, which is about to end.
    virtual void Forget() {}

    // Lets each call that the operation makes go wrong, one at a time, with and without an error, and each query.
    // Whatever goes wrong, the debug output tells of the error that comes out, and the invariants hold afterwards.
    void Run(const QTBScenario& scenario);

    // Lets a call do nothing from the given one on, and succeed.
    HRESULT RunWithout(const char* silentCall, const QTBScenario& scenario, int callsBefore = 0);

    static CATIProduct_var Product(const std::string& name);

    // An operation of an interface of a subject: the key of a PDM node; that behind "window:" or "cont:" for the node's
    // rep node in the window and in the container without one, behind "navigation:" for its node of the window's tree;
    // "graph", "window" and "cont" for the containers; "product:A" for the products; "document" for that of the window.
    // Made anew each time: "new document", "alias", "box", "info" (an info node).
    template <class Interface, class Operation>
    static QTBScenario On(const char* subject, const char* name, Operation operation)
    {
        QTBScenario scenario;
        scenario.name = std::string(name) + " of " + subject;
        scenario.subject = subject;
        scenario.run = [operation](const CATBaseUnknown_var& spSubject) {
            const CATInterface_var<Interface> spInterface(spSubject);
            return operation(*spInterface);
        };
        return scenario;
    }
    CATBaseUnknown_var Subject(const std::string& name) const;

    QTBIRepNode_var InWindow(const char* key) const { return m_pWindow->Find(FindNode(key)); }
    QTBIRepNode_var InCont(const char* key) const;
    static CATListValQTBNodeRelationInfo InfoList(std::initializer_list<QTBNodeRelationInfo> infos);

    static const QTBNodeRelationInfo PARTS;
    static const QTBNodeRelationInfo FILES;

    CATBaseUnknown_var m_spSecond;
    std::unique_ptr<QTBTestWindow> m_pWindow;
    QTBIRepNodeCont_var m_spCont;
    std::unique_ptr<QTBFakeCommunication> m_pCommunication;
    std::shared_ptr<FaultyProducts> m_pFaultyProducts;

private:
    // That of the last subject.
    std::string m_LateType;

    struct Outcome
    {
        std::set<std::string> tolerated;
        std::set<std::string> absent;
        std::vector<std::string> surprises;
    };

    void RunAll(const QTBScenario& scenario, QTBFaultPoint::Points points, Outcome* pOutcome);
    void RunAllocations(const QTBScenario& scenario, Outcome* pOutcome);
    HRESULT RunOnce(const QTBScenario& scenario, Outcome* pOutcome);
    static void ExpectUsable(const std::string& place, Outcome* pOutcome);
    void DissolveLinks() const;
    static void Judge(const QTBScenario& scenario, HRESULT hr, const std::vector<std::string>& diagnoses,
                      const std::string& place, Outcome* pOutcome);
};
