// A session whose PDM system is a store: from the first import to the last deletion, with windows open all the while.

#include "CATFrmWindow.h"
#include "CATNavigBox.h"
#include "QTBCommUtil.h"
#include "QTBConstants.h"
#include "QTBContextMenuInfo.h"
#include "QTBDocUtil.h"
#include "QTBGlobVarsUtil.h"
#include "QTBICommunicationServices.h"
#include "QTBINodeAttributes.h"
#include "QTBINodeRelations.h"
#include "QTBIPdmRequests.h"
#include "QTBIRepNode.h"
#include "QTBNodeRelationInfo.h"
#include "QTBPdmStoreComponent.h"
#include "QTBStoreSession.h"
#include "QTBTestWindow.h"

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

namespace {

class StoreCircle : public QTBStoreSession
{
protected:
    void SetUp() override
    {
        QTBStoreSession::SetUp();
        for (const char* name : {"structure", "files"}) {
            ASSERT_THAT(ImportAnswer(ReadFile(QTB_SOURCE_DIR "/examples/as1/" + std::string(name) + ".xml")),
                        Succeeds());
        }
        CATBaseUnknown_var spStore;
        ASSERT_THAT(QTBPdmStoreComponent::Create(Path().c_str(), MakeOptions("kim"), &spStore), Succeeds());
        QTBCommUtil::SetCommComponent(spStore);
        m_spRequests = QTBIPdmRequests_var(spStore);
        ASSERT_TRUE(m_spRequests != NULL_var);
    }

    void TearDown() override
    {
        m_spRequests = NULL_var;
        QTBCommUtil::SetCommComponent(NULL_var);
        QTBStoreSession::TearDown();
    }

    static CATListValCATUnicodeString ToList(const std::vector<const char*>& texts)
    {
        CATListValCATUnicodeString list;
        for (const char* text : texts) {
            list.Append(text);
        }
        return list;
    }

    // A command: asks the PDM system and reads its answer into the graph; the windows follow.
    template <class Request>
    HRESULT Command(Request request)
    {
        CATIDOMDocument_var spAnswer;
        const HRESULT hr = request(&spAnswer);
        if (FAILED(hr)) {
            EXPECT_TRUE(spAnswer == NULL_var);
            return hr;
        }
        EXPECT_THAT(GetPdmNodeCont()->UpdatePdmGraph(spAnswer, nullptr, nullptr), Succeeds());
        unsigned char bAddNewNodes = FALSE;
        EXPECT_THAT(GetPdmNodeCont()->UpdateAllRepNodeContainers(&bAddNewNodes), Succeeds());
        return hr;
    }
    HRESULT ExpandAll(const std::vector<const char*>& keys)
    {
        CATListValQTBNodeRelationInfo relations;
        relations.Append(QTBNodeRelationInfo("PartPart", usLEFT_TO_RIGHT));
        relations.Append(QTBNodeRelationInfo("PartFile", usLEFT_TO_RIGHT));
        return Command([&](CATIDOMDocument_var* pspAnswer) {
            return m_spRequests->Expand(ToList(keys), relations, -1, pspAnswer);
        });
    }

    // The tree below a rep node with the keys of its PDM nodes; relations are left out.
    static std::string TreeOf(const CATBaseUnknown_var& spRepNode)
    {
        CATListValCATBaseUnknown_var children;
        EXPECT_THAT(QTBIRepNode_var(spRepNode)->GetDirectChildren(&children), Succeeds());
        std::string text;
        for (const CATBaseUnknown_var& spChild : children) {
            text += (text.empty() ? "" : " ") + TreeOf(spChild);
        }
        unsigned char bIsObject = FALSE;
        EXPECT_THAT(QTBIRepNode_var(spRepNode)->RepresentsPdmObjNode(&bIsObject), Succeeds());
        if (bIsObject == FALSE) {
            return text;
        }
        return QTBTestWindow::PdmKeysOf(ListOf(spRepNode)).front() + (text.empty() ? "" : "(" + text + ")");
    }
    static CATListValCATBaseUnknown_var ListOf(const CATBaseUnknown_var& spNode)
    {
        CATListValCATBaseUnknown_var list;
        list.Append(spNode);
        return list;
    }
    static std::string TreeIn(const QTBTestWindow& window)
    {
        CATListValCATBaseUnknown_var roots;
        unsigned char bFalse = FALSE;
        EXPECT_THAT(window.GetCont()->GetRepRootNodes(&roots, &bFalse, &bFalse), Succeeds());
        std::string text;
        for (const CATBaseUnknown_var& spRoot : roots) {
            text += (text.empty() ? "" : " ") + TreeOf(spRoot);
        }
        return text;
    }
    static std::string Replace(std::string text, const std::string& from, const std::string& to)
    {
        for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size()) {
            text.replace(at, from.size(), to);
        }
        return text;
    }

    // Actions of the node's context menu that are enabled.
    static std::vector<std::string> EnabledActions(const QTBTestWindow& window, const char* key)
    {
        std::vector<std::string> actions;
        CATListValQTBContextMenuInfo entries;
        EXPECT_THAT(window.Find(FindNode(key))->GetContextMenuInfo(&entries, nullptr, nullptr), Succeeds()) << key;
        for (const QTBContextMenuInfo& entry : entries) {
            if (entry.IsEnabled() != FALSE) {
                actions.emplace_back(entry.GetActionName().View());
            }
        }
        return actions;
    }

    static std::string DescriptionOf(const char* key)
    {
        CATUnicodeString usDescription;
        EXPECT_THAT(PdmNode(key)->GetDescriptionString(&usDescription), Succeeds());
        return std::string(usDescription.View());
    }

    QTBIPdmRequests_var m_spRequests;
};

constexpr const char* NUT_TREE = "nut(CATPartFile/nut)";

TEST_F(StoreCircle, AWholeDay)
{
    // Two windows, for the assembly and one of its parts.
    const QTBTestWindow assembly;
    const QTBTestWindow part;

    // The roots of the store, and everything below the assembly.
    ASSERT_THAT(Command([this](CATIDOMDocument_var* pspAnswer) {
                    return m_spRequests->InvokeFunction("getRoots", ToList({"class"}), ToList({"Part"}), pspAnswer);
                }),
                Succeeds());
    EXPECT_THAT(AllKeys(), ElementsAre("as1"));
    ASSERT_THAT(ExpandAll({"as1"}), Succeeds());
    EXPECT_EQ(AllKeys().size(), 9U + 13U + 9U + 9U);

    assembly.Show(FindNode("as1"), {"PartPart", "PartFile"});
    part.Show(FindNode("nut-bolt-assembly"), {"PartPart", "PartFile"});
    const std::string assemblyTree = TreeIn(assembly);
    const QTBIRepNode_var spPart = part.Find(FindNode("nut-bolt-assembly"));
    const std::string partTree = TreeOf(spPart);
    EXPECT_THAT(assemblyTree, HasSubstr(NUT_TREE));
    EXPECT_THAT(partTree, HasSubstr(NUT_TREE));
    const QTBIRepNode_var spNut = part.Find(FindNode("nut"));

    // Check out: the file can be changed now, and its menu says so.
    EXPECT_THAT(EnabledActions(assembly, "CATPartFile/nut"), AllOf(Contains("CheckOut"), Not(Contains("CheckIn"))));
    ASSERT_THAT(Command([this](CATIDOMDocument_var* pspAnswer) {
                    return m_spRequests->CheckOut(ToList({"nut", "CATPartFile/nut"}), pspAnswer);
                }),
                Succeeds());
    EXPECT_THAT(EnabledActions(assembly, "CATPartFile/nut"), AllOf(Contains("CheckIn"), Not(Contains("CheckOut"))));
    EXPECT_EQ(InfoOf(FindNode("nut"), "QtbCheckedOutBy"), "kim");
    EXPECT_EQ(TreeIn(assembly), assemblyTree);

    // Somebody else cannot have it, and sees who has.
    CATBaseUnknown_var spOtherStore;
    ASSERT_THAT(QTBPdmStoreComponent::Create(Path().c_str(), MakeOptions("lee"), &spOtherStore), Succeeds());
    const QTBIPdmRequests_var spOther(spOtherStore);
    CATIDOMDocument_var spAnswer;
    EXPECT_THAT(spOther->CheckOut(ToList({"nut"}), &spAnswer), FailsWith("CheckedOutByOtherERR_1103", "nut"));
    ASSERT_THAT(spOther->GetItems(ToList({"nut"}), &spAnswer), Succeeds());
    ASSERT_THAT(GetPdmNodeCont()->UpdatePdmGraph(spAnswer, nullptr, nullptr), Succeeds());
    EXPECT_EQ(DescriptionOf("nut"), "nut, nut (checked out by kim)");

    // A new version takes the old one's place in both trees, and the rep nodes stay the same.
    ASSERT_THAT(Command([this](CATIDOMDocument_var* pspNewAnswer) {
                    return m_spRequests->Revise(ToList({"nut"}), pspNewAnswer);
                }),
                Succeeds());
    EXPECT_TRUE(FindNode("nut") == NULL_var);
    EXPECT_EQ(TreeIn(assembly), Replace(assemblyTree, NUT_TREE, "nut/B(CATPartFile/nut)"));
    EXPECT_EQ(TreeOf(spPart), Replace(partTree, NUT_TREE, "nut/B(CATPartFile/nut)"));
    EXPECT_TRUE(part.Find(FindNode("nut/B")) == spNut);
    EXPECT_EQ(InfoOf(FindNode("nut/B"), "QtbVersion"), "B");
    EXPECT_EQ(AllKeys().size(), 9U + 13U + 9U + 9U);

    // Expanding again changes nothing: graph and store agree.
    const std::vector<std::string> keys = AllKeys();
    const std::string revisedTree = TreeIn(assembly);
    ASSERT_THAT(ExpandAll({"as1"}), Succeeds());
    EXPECT_EQ(AllKeys(), keys);
    EXPECT_EQ(TreeIn(assembly), revisedTree);

    // A new relation, as the library asks for it.
    ASSERT_THAT(GetPdmNodeCont()->CreateRelationInPdmGraph("PartPart", ObjNode("plate"), ObjNode("nut/B"),
                                                           Attribute("InstanceName", "nut_9").c_str()),
                Succeeds());
    const std::vector<std::string> below = RightKeys("plate", "PartPart");
    ASSERT_EQ(below.size(), 1U);
    EXPECT_EQ(AttributeOf(FindNode(below[0].c_str()), "InstanceName"), "nut_9");
    ASSERT_THAT(Get({below[0].c_str()}), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("r " + below[0] + " plate>nut/B"));

    // What another has checked out stays, in the store and in the graph.
    ASSERT_THAT(spOther->CheckOut(ToList({"bolt"}), &spAnswer), Succeeds());
    EXPECT_THAT(GetPdmNodeCont()->RemoveNodeFromPdmGraph("bolt", TRUE, FALSE, FALSE, nullptr),
                FailsWith("CheckedOutByOtherERR_1103", "bolt"));
    EXPECT_TRUE(FindNode("bolt") != NULL_var);
    EXPECT_THAT(Get({"bolt"}), Succeeds());

    // A deletion, as the library asks for it.
    ASSERT_THAT(GetPdmNodeCont()->RemoveNodeFromPdmGraph("rod", TRUE, FALSE, FALSE, nullptr), Succeeds());
    EXPECT_TRUE(FindNode("rod") == NULL_var);
    EXPECT_THAT(Get({"rod"}), FailsWith("ItemNotFoundERR_1101", "rod"));
    EXPECT_THAT(TreeIn(assembly), Not(HasSubstr("rod(")));

    // And one whose answer the graph reads.
    ASSERT_THAT(Command([&below, this](CATIDOMDocument_var* pspNewAnswer) {
                    return m_spRequests->DeleteItems(ToList({below[0].c_str()}), nullptr, pspNewAnswer);
                }),
                Succeeds());
    EXPECT_THAT(RightKeys("plate", "PartPart"), IsEmpty());
    EXPECT_THAT(Faults(), IsEmpty());
}

TEST_F(StoreCircle, ARelationToAnItemThatIsGoneIsRefusedAndTheGraphStaysAsItIs)
{
    ASSERT_THAT(ExpandAll({"as1"}), Succeeds());
    ASSERT_THAT(m_pStore->Delete({"rod"}, "", {}), Succeeds());
    const std::vector<std::string> keys = AllKeys();
    EXPECT_THAT(GetPdmNodeCont()->CreateRelationInPdmGraph("PartPart", ObjNode("plate"), ObjNode("rod"), ""),
                FailsWith("ItemNotFoundERR_1101", "rod"));
    EXPECT_EQ(AllKeys(), keys);
    EXPECT_THAT(GetPdmNodeCont()->RemoveNodeFromPdmGraph("rod", TRUE, FALSE, FALSE, nullptr),
                FailsWith("ItemNotFoundERR_1101", "rod"));
    EXPECT_EQ(AllKeys(), keys);
    EXPECT_THAT(GetPdmNodeCont()->CreateRelationInPdmGraph("PartPart", ObjNode("plate"), ObjNode("nut"), "<a"),
                FailsWithMessage("AttributesMalformedERR_1111"));
    EXPECT_EQ(AllKeys(), keys);
}

TEST_F(StoreCircle, ASessionThatMissedVersionsGetsTheNewestInTheirPlace)
{
    const QTBTestWindow assembly;
    ASSERT_THAT(ExpandAll({"as1"}), Succeeds());
    assembly.Show(FindNode("as1"), {"PartPart"});
    const std::string tree = TreeIn(assembly);
    // Another session makes two new versions of a sub-assembly.
    ASSERT_THAT(m_pStore->Revise({"nut-bolt-assembly"}, {}), Succeeds());
    ASSERT_THAT(m_pStore->Revise({"nut-bolt-assembly/B"}, {}), Succeeds());
    ASSERT_THAT(ExpandAll({"as1"}), Succeeds());
    EXPECT_TRUE(FindNode("nut-bolt-assembly") == NULL_var);
    EXPECT_EQ(TreeIn(assembly), Replace(tree, "nut-bolt-assembly", "nut-bolt-assembly/C"));
    EXPECT_EQ(AllKeys().size(), 9U + 13U + 9U + 9U);
}

TEST_F(StoreCircle, WhenTheNewestVersionIsDeletedTheTreesShowTheOneBefore)
{
    const QTBTestWindow assembly;
    ASSERT_THAT(ExpandAll({"as1"}), Succeeds());
    assembly.Show(FindNode("as1"), {"PartPart", "PartFile"});
    const std::string tree = TreeIn(assembly);
    const std::vector<std::string> keys = AllKeys();
    ASSERT_THAT(Command([this](CATIDOMDocument_var* pspAnswer) {
                    return m_spRequests->Revise(ToList({"nut-bolt-assembly"}), pspAnswer);
                }),
                Succeeds());
    ASSERT_THAT(Command([this](CATIDOMDocument_var* pspAnswer) {
                    return m_spRequests->DeleteItems(ToList({"nut-bolt-assembly/B"}), nullptr, pspAnswer);
                }),
                Succeeds());
    EXPECT_EQ(TreeIn(assembly), tree);
    EXPECT_EQ(AllKeys(), keys);
}

TEST_F(StoreCircle, TheMenuFollowsTheState)
{
    const QTBTestWindow assembly;
    ASSERT_THAT(ExpandAll({"as1"}), Succeeds());
    assembly.Show(FindNode("as1"), {"PartPart", "PartFile"});
    EXPECT_THAT(EnabledActions(assembly, "rod"), Contains("UpdateItem"));
    ASSERT_THAT(
        Command([this](CATIDOMDocument_var* pspAnswer) { return m_spRequests->Promote(ToList({"rod"}), pspAnswer); }),
        Succeeds());
    EXPECT_THAT(EnabledActions(assembly, "rod"), Not(Contains("UpdateItem")));
}

TEST_F(StoreCircle, TheStateCodesOfTheTreeFollowTheCheckOut)
{
    const QTBTestWindow window;
    ASSERT_THAT(ExpandAll({"rod"}), Succeeds());
    window.Show(FindNode("rod"), {});
    const auto getStateCode = [&window] {
        const std::vector<CATNavigLine> lines = window.GetFrmWindow()->GetNavigBox()->Display();
        return lines.empty() ? -1 : lines.front().stateCode;
    };
    // The user may change it.
    EXPECT_EQ(getStateCode(), 246);
    ASSERT_THAT(OpenFor("lee")->CheckOut({"rod"}, {}), Succeeds());
    ASSERT_THAT(
        Command([this](CATIDOMDocument_var* pspAnswer) { return m_spRequests->GetItems(ToList({"rod"}), pspAnswer); }),
        Succeeds());
    window.GetFrmWindow()->GetNavigBox()->RedrawAll();
    // It may neither be changed nor checked out.
    EXPECT_EQ(getStateCode(), 249);
}

TEST_F(StoreCircle, FilesGoInAndOut)
{
    CATIDOMDocument_var spAnswer;
    ASSERT_THAT(m_spRequests->CheckOut(ToList({"CATPartFile/rod"}), &spAnswer), Succeeds());
    ASSERT_THAT(
        m_spRequests->CheckIn(ToList({"CATPartFile/rod"}), ToList({WriteFile("rod", "a rod").c_str()}), &spAnswer),
        Succeeds());
    ASSERT_THAT(GetPdmNodeCont()->UpdatePdmGraph(spAnswer, nullptr, nullptr), Succeeds());
    EXPECT_EQ(InfoOf(FindNode("CATPartFile/rod"), "QtbHasFile"), "true");
    ASSERT_THAT(m_spRequests->FetchFile("CATPartFile/rod", PathOf("fetched").c_str()), Succeeds());
    EXPECT_EQ(ReadFile(PathOf("fetched")), "a rod");
}

TEST_F(StoreCircle, RequestsOfAllKindsFeedTheGraph)
{
    ASSERT_THAT(Command([this](CATIDOMDocument_var* pspAnswer) {
                    return m_spRequests->Query("Part", ToList({"PartNumber"}), ToList({"nut*"}), TRUE, pspAnswer);
                }),
                Succeeds());
    EXPECT_THAT(AllKeys(), ElementsAre("nut", "nut-bolt-assembly"));
    ASSERT_THAT(Command([this](CATIDOMDocument_var* pspAnswer) {
                    return m_spRequests->UpdateAttributes("nut", Attribute("Material", "steel").c_str(), pspAnswer);
                }),
                Succeeds());
    EXPECT_EQ(AttributeOf(FindNode("nut"), "Material"), "steel");
    ASSERT_THAT(Command([this](CATIDOMDocument_var* pspAnswer) {
                    return m_spRequests->CreateObject("Document", "Doc/1", Attribute("Name", "manual").c_str(),
                                                      pspAnswer);
                }),
                Succeeds());
    EXPECT_EQ(AttributeOf(FindNode("Doc/1"), "Name"), "manual");
}

TEST_F(StoreCircle, WrongArgumentsAreRefused)
{
    CATIDOMDocument_var spAnswer;
    EXPECT_EQ(m_spRequests->GetItems(ToList({"nut"}), nullptr), E_POINTER);
    EXPECT_THAT(m_spRequests->Query("Part", ToList({"Name"}), ToList({}), TRUE, &spAnswer), FailsQuietly());
    EXPECT_THAT(m_spRequests->InvokeFunction("getRoots", ToList({}), ToList({"x"}), &spAnswer), FailsQuietly());
    QTBICommunicationServices_var spServices;
    ASSERT_THAT(QTBCommUtil::GetCommComponent(&spServices), Succeeds());
    EXPECT_THAT(spServices->CreateRelation("PartPart", NULL_var, NULL_var, "", &spAnswer), FailsQuietly());
    EXPECT_THAT(spServices->Delete(NULL_var, nullptr), FailsQuietly());
    const CATUnicodeString usOption("Everything");
    ASSERT_THAT(ExpandAll({"rod"}), Succeeds());
    EXPECT_THAT(spServices->Delete(FindNode("rod"), &usOption), FailsWith("DeleteOptionUnknownERR_1119", "Everything"));
    EXPECT_THAT(QTBPdmStoreComponent::Create(PathOf("missing").c_str(), MakeOptions(), nullptr),
                testing::Eq(E_POINTER));
    CATBaseUnknown_var spStore;
    EXPECT_THAT(QTBPdmStoreComponent::Create(PathOf("missing").c_str(), MakeOptions(), &spStore),
                FailsWithMessage("StoreNotFoundERR_1001"));
}

} // namespace
