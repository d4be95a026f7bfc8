#include "QTBFaultSession.h"

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <map>
#include <new>
#include <optional>
#include <tuple>

#include <gmock/gmock.h>

#include "CATComponent.h"
#include "CATDocument.h"
#include "CATDocumentServices.h"
#include "CATFrmEditor.h"
#include "CATFrmNavigGraphicWindow.h"
#include "CATFrmObjectEditor.h"
#include "CATInstantiateComponent.h"
#include "CATLateType.h"
#include "CATNavigBox.h"
#include "QTBConstants.h"
#include "QTBDebugUtil.h"
#include "QTBDiagnosis.h"
#include "QTBEditedSchema.h"
#include "QTBInvariants.h"
#include "QTBProductSession.h"
#include "QTBReplacedExtension.h"
#include "TIECATIPrdProperties.h"
#include "TIECATIProduct.h"

namespace {

using ::testing::IsEmpty;

// What a session with products offers its own tests.
class Products : public QTBProductSession
{
public:
    using QTBProductSession::At;
    using QTBProductSession::DocumentOf;
    using QTBProductSession::Open;
    using QTBProductSession::Root;
};

constexpr const char* PRODUCTS = R"(
    <product id="a" file="a.CATProduct" partNumber="N1">
      <instance of="b" name="B.1"><property name="QtbRelationKey">FAB</property></instance><instance of="n" name="N.1"/>
    </product>
    <product id="b" file="b.CATProduct" partNumber="N2"><instance of="c" name="C.1"/></product>
    <product id="c" file="c.CATPart" partNumber="N3" dirty="true"/>
    <product id="n" file="n.CATPart" partNumber="New"/>
    <product id="x" file="x.CATProduct" partNumber="X"><instance of="f" name="F.1"/></product>
    <product id="f" file="f.CATProduct" partNumber="FOLDER_1">
      <instance of="y" name="Y.1"/><instance of="y" name="Y.1"/><instance of="l" name="L.1"/>
      <instance of="v" name="V.1"/><instance of="g" name="G.1"/>
    </product>
    <product id="y" file="y.CATPart" partNumber="Y"/>
    <product id="l" file="l.CATPart" link="broken"/>
    <product id="v" file="v.CATPart" link="visualization" shape="v.cgr"/>
    <product id="g" file="g.cgr" partNumber="G"/>)";

// Where the display name of a value cannot be told, the value stands for itself.
const std::set<std::string> DISPLAY_VALUES{"QTBSchemaUtil::ShowDataSourceNlsValues", "QTBSchemaUtil::GetAttributePtr",
                                           "QTBSchemaUtil::GetDataSourcePtr", "QTBSchemaDataSource::GetValuePtr"};

bool EndsWith(const std::string& text, const std::string& end)
{
    return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

// The operation of "Class::Operation".
std::string OperationOf(const std::string& name)
{
    const std::size_t colons = name.rfind(':');
    return colons == std::string::npos ? name : name.substr(colons + 1);
}

// Stands before the platform's interface object, which does the work.
template <class InterfaceType>
class ForwardTie : public InterfaceType
{
public:
    using Interface = InterfaceType;

    ForwardTie(CATComponent* pComponent, CATBaseUnknown* pReal)
        : InterfaceType(pComponent), m_pReal(static_cast<InterfaceType*>(pReal))
    {
    }
    ~ForwardTie() override { delete m_pReal; }

    InterfaceType* Target() { return m_pReal; }

private:
    InterfaceType* m_pReal;
};

template <template <class...> class Tie, class Interface>
class ForwardedInterface
{
public:
    explicit ForwardedInterface(const char* lateType)
    {
        for (const CATLateType::Registration* pRegistration : CATLateType::Find(lateType)->GetOwnRegistrations()) {
            if (pRegistration->pInterface == Interface::MetaObject()) {
                s_RealFactory = pRegistration->factory;
            }
        }
        m_pReplaced = std::make_unique<QTBReplacedExtension>(lateType, Interface::MetaObject(), &Create);
    }

private:
    static CATBaseUnknown* Create(CATComponent* pComponent)
    {
        std::unique_ptr<CATBaseUnknown> pReal(s_RealFactory(pComponent));
        pComponent->Detach(pReal.get());
        auto pTie = std::make_unique<Tie<ForwardTie<Interface>>>(pComponent, pReal.get());
        // The tie deletes it.
        pReal.release();
        pComponent->Attach(Interface::GetIID(), pTie.get());
        return pTie.release();
    }

    inline static CATInterfaceObjectFactory s_RealFactory = nullptr;

    std::unique_ptr<QTBReplacedExtension> m_pReplaced;
};

// What the scenarios of all tests have driven.
struct Driven
{
    // Late type of the subject, name and slot of the operation.
    std::set<std::tuple<std::string, std::string, int>> operations;
    int scenarios = 0;
    // Distinct places of allocations, of which some are driven.
    int allocations = 0;
    std::map<QTBFaultPoint::Points, int> places;
};
Driven s_Driven;

bool IsDriven(const QTBFaultPoint::OfferedOperation& offered)
{
    return std::any_of(s_Driven.operations.begin(), s_Driven.operations.end(), [&](const auto& driven) {
        const auto& [lateType, name, slot] = driven;
        return name == offered.name && slot == offered.slot &&
               CATLateType::Find(lateType.c_str())->IsAKindOf(offered.lateType.c_str());
    });
}

// Every operation that the library offers is driven by a scenario.
class EveryOperation : public ::testing::Environment
{
public:
    void TearDown() override
    {
        const ::testing::UnitTest& tests = *::testing::UnitTest::GetInstance();
        if (tests.test_to_run_count() < tests.total_test_count()) {
            return;
        }
        for (const QTBFaultPoint::OfferedOperation& offered : QTBFaultPoint::s_OfferedOperations) {
            EXPECT_TRUE(IsDriven(offered))
                << "no scenario drives " << offered.name << offered.parameters << " of " << offered.lateType;
        }
        std::cout << QTBFaultPoint::s_OfferedOperations.size() << " operations, " << s_Driven.scenarios
                  << " scenarios; places: " << s_Driven.places[QTBFaultPoint::CALLS] << " of calls, "
                  << s_Driven.places[QTBFaultPoint::QUERIES] << " of queries, "
                  << s_Driven.places[QTBFaultPoint::ALLOCATIONS] << " of " << s_Driven.allocations << " of allocations"
                  << std::endl;
    }
};

[[maybe_unused]] const ::testing::Environment* const s_pEveryOperation =
    ::testing::AddGlobalTestEnvironment(new EveryOperation);

} // namespace

// What the platform does for products can go wrong too.
class QTBFaultSession::FaultyProducts
{
private:
    ForwardedInterface<TIECATIProduct, CATIProduct> m_Product{"ASMPRODUCT"};
    ForwardedInterface<TIECATIPrdProperties, CATIPrdProperties> m_Properties{"ASMPRODUCT"};
};

const QTBNodeRelationInfo QTBFaultSession::PARTS{"PartPart", usLEFT_TO_RIGHT};
const QTBNodeRelationInfo QTBFaultSession::FILES{"PartFile", usLEFT_TO_RIGHT};

void QTBFaultSession::SetUp()
{
    const auto classes = [](const char* left, const char* right) {
        return Attribute("Class1", left) + Attribute("Class2", right);
    };
    m_pFaultyProducts = std::make_shared<FaultyProducts>();
    QTBTestSession::SetUp();
    if (!UsesBomPartStructure()) {
        QTBLoadEditedSchema({{R"(bomPartStructure="true")", R"(bomPartStructure="false")"}});
    }
    m_pCommunication = std::make_unique<QTBFakeCommunication>();
    Update(
        Part(
            "A",
            Attribute("PartNumber", "N1") + Attribute("Name", "Axle") + Attribute("State", "10") +
                R"(<a name="List" type="list"><v>one</v></a><a name="Table" type="table"><row><cell>x</cell></row></a>)" +
                R"(<a name="Owner" type="object"><o><a name="Class">Person</a><a name="Key">E</a>)" +
                R"(<a name="FullName">Somebody</a></o></a>)" +
                R"(<a name="Second" type="object"><embedded><a name="Class">Person</a></embedded></a>)" +
                Info({{"QtbVersion", "1"}, {"QtbIsEditAllowed", "true"}})) +
        Part("B", Attribute("PartNumber", "N2") + Attribute("Name", "Axle")) +
        Part("C", Attribute("PartNumber", "N3")) +
        Object("CATProductFile", "FA", Attribute("FileName", "a.CATProduct")) +
        Object("CATProductFile", "FB",
               Attribute("FileName", "b.CATProduct") + Attribute("PartNumber", "N2") + Info({{"QtbVersion", "1"}})) +
        Object("CATPartFile", "FC", Attribute("FileName", "c.CATPart")) +
        Object("CGRFile", "FG", Attribute("FileName", "g.cgr")) +
        Object("Document", "D", Attribute("DocumentNumber", "4711")) +
        PartPart("AB", "A", "B", Attribute("InstanceName", "B.1")) +
        PartPart("BC", "B", "C",
                 Attribute("InstanceName", "C.1") + "<parentClasses><class>Usage</class></parentClasses>") +
        Relation("PartFile", "AFA", "A", "FA", classes("Part", "CATProductFile")) +
        Relation("PartFile", "BFB", "B", "FB", classes("Part", "CATProductFile")) +
        Relation("PartFile", "CFC", "C", "FC", classes("Part", "CATPartFile")) +
        Relation("FileFile", "FAB", "FA", "FB",
                 classes("CATProductFile", "CATProductFile") + Attribute("InstanceName", "B.1")) +
        Relation("PartDocument", "AD", "A", "D", classes("Part", "Document")));

    m_pWindow = std::make_unique<QTBTestWindow>();
    m_pWindow->Show(FindNode("A"), {"PartPart", "PartFile"});
    if (!UsesBomPartStructure()) {
        m_pWindow->Show(FindNode("FA"), {"FileFile"});
    }

    void* pCont = nullptr;
    EXPECT_THAT(::CATInstantiateComponent("QTBRepNodeCont", IID_QTBIRepNodeCont, &pCont), Succeeds());
    m_spCont = QTBIRepNodeCont_var::Adopt(static_cast<QTBIRepNodeCont*>(pCont));
    NodesToRetrieve allNodes = ALL_NODES;
    EXPECT_THAT(m_spCont->SetPdmNodesToConsider(&allNodes), Succeeds());
    unsigned char bOneLevelOnly = FALSE;
    unsigned char bAddNewNodes = TRUE;
    EXPECT_THAT(m_spCont->UpdateRepTrees(FindNode("A"), InfoList({PARTS, FILES}), &bOneLevelOnly, nullptr, nullptr,
                                         &bAddNewNodes),
                Succeeds());

    Products::Open(PRODUCTS);
    CATDocument* pDocument = Products::DocumentOf(Product("A"));
    EXPECT_NE(CATFrmNavigGraphicWindow::Create(pDocument->GetStorageName(), CATFrmObjectEditor::Create(pDocument)),
              nullptr);
}

void QTBFaultSession::TearDown()
{
    QTBFaultPoint::Disarm();
    Forget();
    m_spCont = NULL_var;
    m_pWindow.reset();
    m_pCommunication.reset();
    CATDocumentServices::RemoveAll();
    QTBTestSession::TearDown();
    m_pFaultyProducts.reset();
}

CATIProduct_var QTBFaultSession::Product(const std::string& name)
{
    static const std::map<std::string, std::pair<const char*, std::vector<std::string>>> s_Paths{
        {"A", {"N1", {}}},
        {"B", {"N1", {"B.1"}}},
        {"C", {"N1", {"B.1", "C.1"}}},
        {"N", {"N1", {"N.1"}}},
        {"X", {"X", {}}},
        {"F", {"X", {"F.1"}}},
        {"Y", {"X", {"F.1", "Y.1"}}},
        {"V", {"X", {"F.1", "V.1"}}},
        {"G", {"X", {"F.1", "G.1"}}}};
    const auto& [root, path] = s_Paths.at(name);
    return Products::At(root, path);
}

QTBIRepNode_var QTBFaultSession::InCont(const char* key) const
{
    CATListValCATBaseUnknown_var repNodes;
    EXPECT_THAT(PdmNode(key)->GetRepNodes(&repNodes, m_spCont), Succeeds());
    return repNodes.Size() > 0 ? QTBIRepNode_var(repNodes[1]) : QTBIRepNode_var();
}

CATBaseUnknown_var QTBFaultSession::Subject(const std::string& name) const
{
    const std::size_t colon = name.find(':');
    const std::string key = name.substr(colon + 1);
    if (name.rfind("window:", 0) == 0) {
        return InWindow(key.c_str());
    }
    if (name.rfind("cont:", 0) == 0) {
        return InCont(key.c_str());
    }
    if (name.rfind("product:", 0) == 0) {
        return Product(key);
    }
    if (name.rfind("navigation:", 0) == 0) {
        CATNavigBox* pNavigBox = m_pWindow->GetFrmWindow()->GetNavigBox();
        pNavigBox->Display();
        return pNavigBox->GetNode(InWindow(key.c_str()));
    }
    if (name == "document") {
        return m_pWindow->GetFrmWindow()->GetEditor()->GetDocument();
    }
    if (name == "new document" || name == "alias") {
        return CATBaseUnknown_var::Adopt(
            new CATDocument(*CATLateType::Find(name == "alias" ? "QTBDocument" : "QTBDoc")));
    }
    if (name == "box" || name == "info") {
        void* pComponent = nullptr;
        EXPECT_THAT(
            ::CATInstantiateComponent(name == "box" ? "QTBBndBox" : "QTBInfoNode", CLSID_CATBaseUnknown, &pComponent),
            Succeeds());
        return CATBaseUnknown_var::Adopt(static_cast<CATBaseUnknown*>(pComponent));
    }
    if (name.empty()) {
        return NULL_var;
    }
    if (name == "graph") {
        return GetPdmNodeCont();
    }
    if (name == "window" || name == "cont") {
        return name == "cont" ? m_spCont : m_pWindow->GetCont();
    }
    return FindNode(name.c_str());
}

CATListValQTBNodeRelationInfo QTBFaultSession::InfoList(std::initializer_list<QTBNodeRelationInfo> infos)
{
    CATListValQTBNodeRelationInfo list;
    for (const QTBNodeRelationInfo& info : infos) {
        list.Append(info);
    }
    return list;
}

void QTBFaultSession::Run(const QTBScenario& scenario)
{
    SCOPED_TRACE(scenario.name);
    ++s_Driven.scenarios;
    Outcome ofCalls;
    RunAll(scenario, QTBFaultPoint::CALLS, &ofCalls);
    if (!scenario.bNeverFails && !scenario.bDepends) {
        EXPECT_EQ(ofCalls.tolerated, scenario.tolerated);
        EXPECT_EQ(ofCalls.absent, scenario.absent);
    }
    EXPECT_THAT(ofCalls.surprises, IsEmpty());
    // A component that does not answer is something else than it was; what that does to the result depends on the
    // place.
    Outcome ofQueries;
    RunAll(scenario, QTBFaultPoint::QUERIES, &ofQueries);
    EXPECT_THAT(ofQueries.surprises, IsEmpty());
    Outcome ofAllocations;
    RunAllocations(scenario, &ofAllocations);
    EXPECT_THAT(ofAllocations.surprises, IsEmpty());
}

// Of the places that no scenario has come by before, as many as there is time for, in equal steps; all of them when the
// environment variable QTB_ALL_FAULTS is set.
void QTBFaultSession::RunAllocations(const QTBScenario& scenario, Outcome* pOutcome)
{
    static std::set<std::size_t> s_Seen;
    QTBFaultPoint::ArmToRecord(QTBFaultPoint::ALLOCATIONS);
    const HRESULT hr = RunOnce(scenario, pOutcome);
    const std::vector<std::size_t> places = QTBFaultPoint::GetPlaces();
    std::vector<int> newPlaces;
    for (std::size_t i = 0; i < places.size(); ++i) {
        if (s_Seen.insert(places[i]).second) {
            newPlaces.push_back(static_cast<int>(i) + 1);
        }
    }
    s_Driven.allocations += static_cast<int>(newPlaces.size());
    const std::size_t most = scenario.bChanges ? 10 : 40;
    const std::size_t step = std::getenv("QTB_ALL_FAULTS") != nullptr ? 1 : (newPlaces.size() + most - 1) / most;
    for (std::size_t i = 0; i < newPlaces.size() && !HasFatalFailure(); i += step) {
        QTBFaultPoint::Arm(QTBFaultPoint::ALLOCATIONS, newPlaces[i], QTBFaultPoint::FAILS);
        RunOnce(scenario, pOutcome);
        s_Driven.places[QTBFaultPoint::ALLOCATIONS] += QTBFaultPoint::GetStruck().empty() ? 0 : 1;
    }
    if (!scenario.bChanges && !newPlaces.empty()) {
        // With memory it does again what it did before.
        QTBFaultPoint::ArmToRecord(QTBFaultPoint::CALLS);
        if (SUCCEEDED(RunOnce(scenario, pOutcome)) != SUCCEEDED(hr)) {
            pOutcome->surprises.push_back("it does not recover from a lack of memory");
        }
    }
}

// Calls that the same calls lead to are one place, of which the first call goes wrong.
void QTBFaultSession::RunAll(const QTBScenario& scenario, QTBFaultPoint::Points points, Outcome* pOutcome)
{
    QTBFaultPoint::ArmToRecord(points);
    RunOnce(scenario, pOutcome);
    s_Driven.operations.emplace(m_LateType, QTBFaultPoint::GetBegunName(), QTBFaultPoint::GetBegunSlot());
    const std::vector<std::size_t> places = QTBFaultPoint::GetPlaces();
    std::set<std::size_t> seen;
    for (std::size_t i = 0; i < places.size() && !HasFatalFailure(); ++i) {
        if (!seen.insert(places[i]).second) {
            continue;
        }
        ++s_Driven.places[points];
        const int n = static_cast<int>(i) + 1;
        const bool areBothMeant = !scenario.bChanges && points == QTBFaultPoint::CALLS;
        if (areBothMeant || seen.size() % 2 == 0) {
            QTBFaultPoint::Arm(points, n, QTBFaultPoint::FAILS_WITH_ERROR);
            RunOnce(scenario, pOutcome);
        }
        if (areBothMeant || seen.size() % 2 == 1) {
            QTBFaultPoint::Arm(points, n, QTBFaultPoint::FAILS);
            RunOnce(scenario, pOutcome);
        }
    }
}

HRESULT QTBFaultSession::RunOnce(const QTBScenario& scenario, Outcome* pOutcome)
{
    HRESULT hr = E_FAIL;
    std::vector<std::string> diagnoses;
    {
        QTBFaultPoint::Hold();
        const CATBaseUnknown_var spSubject = Subject(scenario.subject);
        m_spSecond = scenario.second.empty() ? CATBaseUnknown_var() : Subject(scenario.second);
        m_LateType = spSubject != NULL_var ? spSubject->IsA() : scenario.lateType;
        scenario.promises.Prepare();
        // Without memory there is no debug output either, so none is asked for.
        std::optional<DebugCapture> capture;
        const auto pObserver = QTBDebugUtil::s_pObserver;
        if (QTBFaultPoint::GetPoints() == QTBFaultPoint::ALLOCATIONS) {
            QTBDebugUtil::s_pObserver = nullptr;
        } else {
            capture.emplace();
        }
        QTBFaultPoint::Release();
        try {
            hr = scenario.run(spSubject);
        } catch (const CATXHException& exception) {
            hr = exception.GetResult();
        } catch (const std::bad_alloc&) {
            hr = E_OUTOFMEMORY;
        }
        QTBFaultPoint::Disarm();
        QTBDebugUtil::s_pObserver = pObserver;
        m_spSecond = NULL_var;
        if (capture) {
            diagnoses = QTBDiagnosis::DiagnosesIn(*capture);
        }
    }
    const std::string& struck = QTBFaultPoint::GetStruck();
    const bool isAllocation = !struck.empty() && QTBFaultPoint::GetPoints() == QTBFaultPoint::ALLOCATIONS;
    const std::string place =
        (isAllocation ? "allocation of " + QTBFaultPoint::DescribeStruckAllocation() : struck) + ": ";
    if (isAllocation) {
        // A factory tells of it as a failure; everything else lets the exception pass.
        if (hr != E_OUTOFMEMORY && !QTBFaultPoint::FactoryRefused()) {
            pOutcome->surprises.push_back(place + QTBDescribeResult(hr));
        }
    } else if (!struck.empty()) {
        Judge(scenario, hr, diagnoses, place, pOutcome);
    } else if (!scenario.bDepends) {
        EXPECT_THAT(hr, Succeeds()) << "without a fault";
    }
    for (const std::string& broken : scenario.promises.FindBroken(FAILED(hr))) {
        pOutcome->surprises.push_back(place + broken);
    }
    if (!scenario.bStopsHalfWay) {
        for (const std::string& broken : QTBFindBrokenInvariants({m_spCont})) {
            pOutcome->surprises.push_back(place + broken);
        }
    } else {
        if (!struck.empty()) {
            ExpectUsable(place, pOutcome);
        }
        DissolveLinks();
    }
    if (scenario.bChanges) {
        SCOPED_TRACE(place + QTBDescribeResult(hr) + (diagnoses.empty() ? "" : " - " + diagnoses.front()));
        TearDown();
        SetUp();
    }
    return hr;
}

HRESULT QTBFaultSession::RunWithout(const char* silentCall, const QTBScenario& scenario, int callsBefore)
{
    const CATBaseUnknown_var spSubject = Subject(scenario.subject);
    m_spSecond = scenario.second.empty() ? CATBaseUnknown_var() : Subject(scenario.second);
    QTBFaultPoint::ArmOperation(silentCall, true, callsBefore);
    const HRESULT hr = scenario.run(spSubject);
    QTBFaultPoint::Disarm();
    m_spSecond = NULL_var;
    return hr;
}

// The graph reads an answer and finds what it read.
void QTBFaultSession::ExpectUsable(const std::string& place, Outcome* pOutcome)
{
    if (FAILED(TryUpdate(Answer(Part("Y1") + Part("Y2") + PartPart("Y", "Y1", "Y2")))) ||
        RightKeys("Y1", "PartPart") != std::vector<std::string>{"Y"}) {
        pOutcome->surprises.push_back(place + "the graph does not read an answer");
    }
}

// The clean-up of a session stops at a failure too. With its links gone it fails nowhere, however they stood. Two nodes
// may hold each other that no container holds any more.
void QTBFaultSession::DissolveLinks() const
{
    std::vector<QTBINodeRelations_var> nodes;
    for (CATBaseUnknown* pComponent : QTBFaultPoint::GetLiveComponents()) {
        if (const QTBINodeRelations_var spINodeRelations(pComponent); spINodeRelations != NULL_var) {
            nodes.push_back(spINodeRelations);
        }
    }
    for (const QTBINodeRelations_var& spINodeRelations : nodes) {
        EXPECT_THAT(spINodeRelations->RemoveAllRels(nullptr), Succeeds());
    }
    EXPECT_THAT(m_spCont->Cleanup(), Succeeds());
    EXPECT_THAT(m_pWindow->GetCont()->Cleanup(), Succeeds());
}

void QTBFaultSession::Judge(const QTBScenario& scenario, HRESULT hr, const std::vector<std::string>& diagnoses,
                            const std::string& place, Outcome* pOutcome)
{
    const std::string& struck = QTBFaultPoint::GetStruck();
    const CATError* pError = FAILED(hr) ? CATError::CATGetLastError(hr, nullptr) : nullptr;
    if (scenario.bNeverFails) {
        // A handle that was left empty is not looked through; it raises.
        if (FAILED(hr) && struck != "QueryInterface") {
            pOutcome->surprises.push_back(place + QTBDescribeResult(hr));
        }
        return;
    }
    if (SUCCEEDED(hr)) {
        if (DISPLAY_VALUES.count(struck) == 0) {
            pOutcome->tolerated.insert(struck);
        }
        return;
    }
    if (pError == nullptr) {
        pOutcome->absent.insert(struck);
        return;
    }
    if (QTBFaultPoint::GetError() != nullptr && pError == QTBFaultPoint::GetError()) {
        return;
    }
    if (QTBFaultPoint::GetError() != nullptr && !scenario.bDepends && scenario.renamed.count(struck) == 0) {
        pOutcome->surprises.push_back(place + "its error is lost: " + QTBDescribeResult(hr));
        return;
    }
    const std::string text =
        pError->GetNLSParameters().empty() ? "" : std::string(pError->GetNLSParameters()[0].View());
    if (pError->GetMsgCatalog() != "QTBDebugErrors") {
        // A handle that a call left empty is not looked through; it raises.
        if (struck == "QueryInterface" || scenario.bDepends) {
            return;
        }
        pOutcome->surprises.push_back(place + QTBDescribeResult(hr));
    } else if (std::none_of(diagnoses.begin(), diagnoses.end(),
                            [&](const std::string& diagnosis) { return diagnosis.rfind(text, 0) == 0; })) {
        pOutcome->surprises.push_back(place + "fails with [" + text + "], of which the debug output says nothing");
    } else if (struck != "QueryInterface" && !scenario.bDepends && scenario.renamed.count(struck) == 0 &&
               (pError->GetMsgId() != "HResultFailedERR_1001" || !EndsWith(text, OperationOf(struck)))) {
        pOutcome->surprises.push_back(place + QTBDescribeResult(hr));
    }
}
