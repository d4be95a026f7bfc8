#include <gmock/gmock.h>

#include "CATICreateInstance.h"
#include "CATIDOMElement.h"
#include "QTBERepNodeContOnRepNodeCont.h"
#include "QTBRepTreeSession.h"

using QTBDiagnosis::Assertion;
using QTBDiagnosis::Call;
using QTBDiagnosis::DiagnosisOf;
using QTBDiagnosis::Handle;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

namespace {

using Nodes = CATListValCATBaseUnknown_var;

// Factory of rep nodes that makes none, or components of another late type.
class OddRepNodeFactory : public CATBaseUnknown
{
public:
    HRESULT CreateInstance(void** ppv)
    {
        if (s_pType == nullptr) {
            return E_FAIL;
        }
        const CATBaseUnknown_var spCreated = s_pType->Create();
        spCreated->AddRef();
        *ppv = spCreated.Get();
        return S_OK;
    }

    inline static const QTBTestLateType* s_pType = nullptr;
};

constexpr CATInterfaceObjectFactory ODD_FACTORY =
    &CATCreateTie<TIECATICreateInstance<CATCodeTie<CATICreateInstance, OddRepNodeFactory>>>;

// Parts A, B, D with the relations AB and AD.
class RepNodeCreation : public QTBFaultyRepTreeSession
{
protected:
    void SetUp() override
    {
        QTBFaultyRepTreeSession::SetUp();
        Update(Part("A") + Part("B") + Part("D") + PartPart("AB", "A", "B") + PartPart("AD", "A", "D"));
    }

    HRESULT TryCreate(const QTBIRepNode_var& spParent, const CATBaseUnknown_var& spPdmNode,
                      QTBIRepNode_var* pspNew) const
    {
        return Cont()->CreateRepNode(spParent, QTBIPdmNode_var(spPdmNode), pspNew, PARTS, nullptr, nullptr);
    }
    std::vector<std::string> Diagnosis(const QTBIRepNode_var& spParent, const CATBaseUnknown_var& spPdmNode) const
    {
        QTBIRepNode_var spNew;
        return DiagnosisOf([&] { return TryCreate(spParent, spPdmNode, &spNew); });
    }
    std::vector<std::string> DiagnosisOfBase() const
    {
        CATBaseUnknown_var spNew;
        return DiagnosisOf([&] { return Cont()->CreateRepNodeBase("key", &spNew); });
    }
    static QTBNodeRelationInfo RelationToLeft(const QTBIRepNode_var& spIRepNode)
    {
        QTBNodeRelationInfo info("none", "none");
        EXPECT_THAT(spIRepNode->GetPdmRelationToLeftNode(&info), Succeeds());
        return info;
    }
    static CATListValQTBNodeRelationInfo Displayed(const QTBIRepNode_var& spIRepNode)
    {
        CATListValQTBNodeRelationInfo infos;
        EXPECT_THAT(spIRepNode->GetPdmRelationsToBeDisplayed(&infos), Succeeds());
        return infos;
    }
};

TEST_F(RepNodeCreation, MakesABareRepNodeOfTheContainer)
{
    CATBaseUnknown_var spNew;
    EXPECT_THAT(Cont()->CreateRepNodeBase("some key", &spNew), Succeeds());
    EXPECT_EQ(KeyOf(spNew), "some key");
    QTBIRepNodeCont_var spCont;
    EXPECT_THAT(QTBIRepNode_var(spNew)->GetRepNodeContainer(&spCont), Succeeds());
    EXPECT_TRUE(spCont == m_spCont);
    EXPECT_EQ(AllRepNodesOf(m_spCont).Size(), 0) << "not in the store yet";
    CATBaseUnknown_var spXmlElement;
    EXPECT_THAT(QTBINodeAttributes_var(spNew)->GetXmlElement(&spXmlElement), Succeeds());
    CATUnicodeString usTag;
    EXPECT_THAT(CATIDOMElement_var(spXmlElement)->GetTagName(&usTag), Succeeds());
    EXPECT_EQ(usTag, "o");
    CATIDOMNode_var spParent;
    EXPECT_THAT(CATIDOMNode_var(spXmlElement)->GetParentNode(&spParent), Succeeds());
    CATIDOMElement_var spRoot;
    EXPECT_THAT(Cont()->GetXmlDocumentRootElement(&spRoot), Succeeds());
    EXPECT_TRUE(spParent == spRoot);
    const int alive = CATBaseUnknown::GetLiveComponentCount();
    spXmlElement = NULL_var;
    spNew = NULL_var;
    EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount(), alive - 1) << "the handle has the only reference";
}

TEST_F(RepNodeCreation, ChecksTheBareRepNode)
{
    {
        const QTBFault fault("SetKey");
        EXPECT_THAT(DiagnosisOfBase(), ElementsAre(Call("spINodeAttributesOnNode->SetKey")));
    }
    {
        const QTBFault fault("SetRepNodeContainer");
        EXPECT_THAT(DiagnosisOfBase(), ElementsAre(Call("spIRepNodeOnNode->SetRepNodeContainer")));
    }
    {
        const QTBFault fault("SetFrmWindowPtr");
        EXPECT_THAT(DiagnosisOfBase(), ElementsAre(Call("spIRepNodeOnNode->SetFrmWindowPtr")));
    }
    const QTBFault fault("SetXmlElement");
    EXPECT_THAT(DiagnosisOfBase(), ElementsAre(Call("spINodeAttributesOnNode->SetXmlElement")));
}

TEST_F(RepNodeCreation, ChecksWhatItsFactoryMakes)
{
    const QTBReplacedExtension oddFactory("QTBRepNode", CATICreateInstance::MetaObject(), ODD_FACTORY);
    EXPECT_THAT(DiagnosisOfBase(), ElementsAre(Call("::CATInstantiateComponent")));
    EXPECT_THAT(Diagnosis(NULL_var, FindNode("A")),
                ElementsAre(Call("::CATInstantiateComponent"), Call("CreateRepNodeBase")));
    const QTBBareRepNodeType bareType;
    OddRepNodeFactory::s_pType = &bareType;
    EXPECT_THAT(DiagnosisOfBase(), ElementsAre(Handle("spINodeAttributesOnNode")));
    const QTBTestLateType nodeType("QTBPlainNode", "QTBNode");
    OddRepNodeFactory::s_pType = &nodeType;
    EXPECT_THAT(DiagnosisOfBase(), ElementsAre(Handle("spIRepNodeOnNode")));
    OddRepNodeFactory::s_pType = nullptr;
}

TEST_F(RepNodeCreation, FilesAndLinksARoot)
{
    const QTBIRepNode_var a = CreateRoot("A");
    EXPECT_EQ(TreeOf(a), "A");
    EXPECT_THAT(TreesOf(m_spCont), ElementsAre("A"));
    QTBIRepNode_var spFound;
    unsigned char bExists = FALSE;
    EXPECT_THAT(m_spCont->GetRepNodeByKey(KeyOf(a).c_str(), &spFound, &bExists), Succeeds());
    EXPECT_TRUE(spFound == a);
    EXPECT_TRUE(RepNodesOf("A")[1] == a);
    EXPECT_TRUE(RelationToLeft(a) == QTBNodeRelationInfo());
}

TEST_F(RepNodeCreation, CountsTheKeysThroughoutTheProgram)
{
    const QTBIRepNode_var a = CreateRoot("A");
    const int number = NumberOf(a);
    EXPECT_EQ(KeyOf(a), "A-Rep-" + std::to_string(number));
    EXPECT_EQ(KeyOf(CreateRoot("AB")), "AB-Rep-" + std::to_string(number + 1));
    QTBIRepNode_var spOfOther;
    EXPECT_THAT(Extension(CreateCont())->CreateRepNode(NULL_var, PdmNode("A"), &spOfOther, PARTS, nullptr, nullptr),
                Succeeds());
    EXPECT_EQ(KeyOf(spOfOther), "A-Rep-" + std::to_string(number + 2));
    {
        const QTBFault fault("SetKey");
        QTBIRepNode_var spNew;
        EXPECT_THAT(TryCreate(NULL_var, FindNode("A"), &spNew), FailsCall("spINodeAttributesOnNode->SetKey"));
    }
    EXPECT_EQ(NumberOf(CreateRoot("A")), number + 4) << "a failed creation has used its number";
}

TEST_F(RepNodeCreation, GivesTwoRepNodesOfOnePdmNodeDifferentKeys)
{
    const QTBIRepNode_var first = CreateRoot("A");
    const QTBIRepNode_var second = CreateRoot("A");
    EXPECT_NE(KeyOf(first), KeyOf(second));
    Nodes repNodes;
    EXPECT_THAT(PdmNode("A")->GetRepNodes(&repNodes, m_spCont), Succeeds());
    ASSERT_EQ(repNodes.Size(), 2);
    EXPECT_TRUE(repNodes[1] == first);
    EXPECT_TRUE(repNodes[2] == second);
}

TEST_F(RepNodeCreation, HangsAChildBelowItsParent)
{
    const QTBIRepNode_var a = CreateRoot("A");
    const QTBIRepNode_var ab = Create(a, "AB", USED_IN);
    const QTBIRepNode_var b = Create(ab, "B", PARTS);
    EXPECT_EQ(TreeOf(a), "A(AB(B))");
    EXPECT_TRUE(RelationToLeft(ab) == USED_IN);
    EXPECT_TRUE(RelationToLeft(b) == PARTS);
    EXPECT_TRUE(Displayed(ab) == Relations({USED_IN})) << "a relation displays what it was created for";
    EXPECT_TRUE(Displayed(b) == Relations({})) << "an object displays nothing yet";
}

TEST_F(RepNodeCreation, PutsChildrenWhereTheSessionSays)
{
    const QTBIRepNode_var a = CreateRoot("A");
    QTBGlobVarsUtil::SetAddNewNodeRelationsAt(QTB_PLACE_TO_ADD_END);
    Create(a, "AB");
    Create(a, "AD");
    EXPECT_EQ(TreeOf(a), "A(AB AD)");
    QTBGlobVarsUtil::SetAddNewNodeRelationsAt(QTB_PLACE_TO_ADD_FRONT);
    Create(a, "AD");
    EXPECT_EQ(TreeOf(a), "A(AD AB AD)");
}

TEST_F(RepNodeCreation, FillsTheListOfItsKind)
{
    Nodes relations;
    Nodes objects;
    QTBIRepNode_var spNew;
    for (const char* key : {"A", "AB", "B", "AD"}) {
        EXPECT_THAT(Cont()->CreateRepNode(NULL_var, PdmNode(key), &spNew, PARTS, &relations, &objects), Succeeds());
    }
    EXPECT_THAT(PdmKeysOf(relations), ElementsAre("AB", "AD"));
    EXPECT_THAT(PdmKeysOf(objects), ElementsAre("A", "B"));
    EXPECT_THAT(Cont()->CreateRepNode(NULL_var, PdmNode("A"), &spNew, PARTS, &relations, nullptr), Succeeds());
    EXPECT_THAT(Cont()->CreateRepNode(NULL_var, PdmNode("AB"), &spNew, PARTS, nullptr, &objects), Succeeds());
    EXPECT_EQ(relations.Size() + objects.Size(), 4);
}

TEST_F(RepNodeCreation, ChecksThePdmNode)
{
    EXPECT_THAT(TryCreate(NULL_var, FindNode("A"), nullptr), FailsAssertion("pspIRepNodeOnNewChild != NULL"));
    const QTBBarePdmObjNodeType bareType;
    EXPECT_THAT(Diagnosis(NULL_var, bareType.Create()), ElementsAre(Handle("spINodeAttributesOnPdmNode")));
    QTBTestLateType withoutRelations("QTBPdmNodeWithoutRelations");
    withoutRelations.Register<TIEQTBIPdmNode, QTBIPdmNode, QTBEPdmNodeOnPdmNode>();
    withoutRelations.Register<TIEQTBINodeAttributes, QTBINodeAttributes, QTBENodeAttributesOnNode>();
    EXPECT_THAT(Diagnosis(NULL_var, withoutRelations.Create()), ElementsAre(Handle("spINodeRelationsOnPdmNode")));
    {
        const QTBFault fault("GetKey", FindNode("A"));
        EXPECT_THAT(Diagnosis(NULL_var, FindNode("A")), ElementsAre(Call("spINodeAttributesOnPdmNode->GetKey")));
    }
    const QTBFault fault("AddRightNode", FindNode("A"));
    EXPECT_THAT(Diagnosis(NULL_var, FindNode("A")), ElementsAre(Call("spINodeRelationsOnPdmNode->AddRightNode")));
}

TEST_F(RepNodeCreation, RefusesAKeyThatIsTaken)
{
    const std::string nextKey = "A-Rep-" + std::to_string(NumberOf(CreateRoot("A")) + 1);
    const CATBaseUnknown_var spOther = CreateLoose("QTBRepNode");
    QTBINodeAttributes_var(spOther)->SetKey(nextKey.c_str());
    File(spOther);
    EXPECT_THAT(Diagnosis(NULL_var, FindNode("A")), ElementsAre(Assertion("NodeExists(usRepKeyName) == FALSE")));
    CreateRoot("A");
}

TEST_F(RepNodeCreation, ChecksParentAndChild)
{
    const QTBIRepNode_var a = CreateRoot("A");
    const QTBBareRepNodeType bareType;
    EXPECT_THAT(Diagnosis(QTBIRepNode_var(bareType.Create()), FindNode("AB")),
                ElementsAre(Handle("spINodeRelationsOnLeftRepNode")));
    {
        const QTBFault fault("AddRightNode", a);
        EXPECT_THAT(Diagnosis(a, FindNode("AB")), ElementsAre(Call("spINodeRelationsOnLeftRepNode->AddRightNode")));
    }
    {
        const QTBFault fault("SetPdmRelationToLeftNode");
        EXPECT_THAT(Diagnosis(a, FindNode("AB")), ElementsAre(Call("spIRepNodeOnNewChild->SetPdmRelationToLeftNode")));
    }
    {
        const QTBFault fault("RepresentsPdmRelNode");
        EXPECT_THAT(Diagnosis(a, FindNode("AB")), ElementsAre(Call("spIRepNodeOnNewChild->RepresentsPdmRelNode")));
    }
    const QTBFault fault("SetSinglePdmRelationToBeDisplayed");
    EXPECT_THAT(Diagnosis(a, FindNode("AB")),
                ElementsAre(Call("spIRepNodeOnNewChild->SetSinglePdmRelationToBeDisplayed")));
}

class CorrespondingRepNode : public RepNodeCreation
{
protected:
    QTBIRepNode_var Corresponding(const QTBIRepNode_var& spParent, const char* key) const
    {
        QTBIRepNode_var spFound = spParent;
        EXPECT_THAT(Cont()->FindCorrespondingRepNode(spParent, PdmNode(key), &spFound), Succeeds());
        return spFound;
    }
    std::vector<std::string> Diagnosis(const QTBIRepNode_var& spParent, const char* key) const
    {
        QTBIRepNode_var spFound;
        return DiagnosisOf([&] { return Cont()->FindCorrespondingRepNode(spParent, PdmNode(key), &spFound); });
    }
};

TEST_F(CorrespondingRepNode, IsTheChildThatShowsThePdmNode)
{
    const QTBIRepNode_var a = CreateRoot("A");
    const QTBIRepNode_var ab = Create(a, "AB");
    const QTBIRepNode_var ad = Create(a, "AD");
    const QTBIRepNode_var spElsewhere = Create(CreateRoot("A"), "AB");
    EXPECT_TRUE(Corresponding(a, "AB") == ab);
    EXPECT_TRUE(Corresponding(a, "AD") == ad);
    EXPECT_TRUE(Corresponding(a, "B") == NULL_var) << "no rep node at all";
    EXPECT_TRUE(Corresponding(ad, "AB") == NULL_var) << "rep nodes elsewhere only";
    EXPECT_TRUE(Corresponding(spElsewhere, "AD") == NULL_var);
}

TEST_F(CorrespondingRepNode, OfSeveralIsTheOneLinkedLast)
{
    for (const QTBPlaceToAdd place : {QTB_PLACE_TO_ADD_FRONT, QTB_PLACE_TO_ADD_END}) {
        QTBGlobVarsUtil::SetAddNewNodeRelationsAt(place);
        const QTBIRepNode_var a = CreateRoot("A");
        Create(a, "AB");
        const QTBIRepNode_var spLast = Create(a, "AB");
        EXPECT_TRUE(Corresponding(a, "AB") == spLast);
        Create(a, "AD");
        Create(a, "AD");
        EXPECT_TRUE(Corresponding(a, "AB") == spLast);
    }
}

TEST_F(CorrespondingRepNode, BelongsToTheContainer)
{
    const QTBIRepNode_var a = CreateRoot("A");
    QTBIRepNode_var spOfOther;
    EXPECT_THAT(Extension(CreateCont())->CreateRepNode(a, PdmNode("AB"), &spOfOther, PARTS, nullptr, nullptr),
                Succeeds());
    EXPECT_TRUE(Corresponding(a, "AB") == NULL_var);
    const QTBIRepNode_var ab = Create(a, "AB");
    EXPECT_TRUE(Corresponding(a, "AB") == ab);
    Create(CreateRoot("A"), "AB");
    EXPECT_TRUE(Corresponding(a, "AB") == ab) << "more rep nodes than children";
    KeepLoose(spOfOther);
}

TEST_F(CorrespondingRepNode, ChecksRepNodesAndChildren)
{
    const QTBIRepNode_var a = CreateRoot("A");
    const QTBIRepNode_var ab = Create(a, "AB");
    {
        const QTBFault fault("GetRepNodes", FindNode("AB"));
        EXPECT_THAT(Diagnosis(a, "AB"), ElementsAre(Call("spIPdmNodeOnChild->GetRepNodes")));
    }
    {
        const QTBFault fault("GetDirectChildren", a);
        EXPECT_THAT(Diagnosis(a, "AB"), ElementsAre(Call("spIRepNodeOnParent->GetDirectChildren")));
    }
    const QTBBareRepNodeType bareType;
    const CATBaseUnknown_var spBare = bareType.Create();
    const CATBaseUnknown_var spNoRepNode = CreateLoose("QTBNode");

    // Among the rep nodes of the PDM node.
    const QTBINodeRelations_var spPdmNode(KeepLoose(FindNode("B")));
    EXPECT_THAT(spPdmNode->AddRightNode("PdmToRep", spNoRepNode, 1, TRUE), Succeeds());
    EXPECT_THAT(Diagnosis(a, "B"), ElementsAre(Handle("spIRepNodeFromPdmNode")));
    EXPECT_THAT(spPdmNode->RemoveRightNode("PdmToRep", spNoRepNode), Succeeds());
    EXPECT_EQ(spPdmNode->AddRightNode("PdmToRep", spBare, 1, TRUE), E_NOINTERFACE);
    EXPECT_THAT(Diagnosis(a, "B"), ElementsAre(Handle("spIAttributeFromPdmNode")));
    spPdmNode->RemoveAllRels(nullptr);

    // Among the children of the parent.
    CreateRoot("AD");
    CreateRoot("AD");
    const QTBIRepNode_var spParent = CreateRoot("A");
    KeepLoose(spParent);
    LinkBelow(spParent, spNoRepNode);
    EXPECT_THAT(Diagnosis(spParent, "AD"), ElementsAre(Handle("spIRepNodeFromParent")));
    QTBINodeRelations_var(spParent)->RemoveRightNode("RepToRep", spNoRepNode);
    LinkBelow(spParent, spBare);
    EXPECT_THAT(Diagnosis(spParent, "AD"), ElementsAre(Handle("spIAttributeFromParent")));
    QTBINodeRelations_var(spParent)->RemoveRightNode("RepToRep", spBare);
}

class NewRoots : public RepNodeCreation
{
protected:
    HRESULT Add(const Nodes& nodes, unsigned char bClear, unsigned char bUsePdmNodes, Nodes* pNewRoots = nullptr,
                Nodes* pSources = nullptr) const
    {
        return m_spCont->AddAsRepRootNodes(nodes, &bClear, &bUsePdmNodes, pNewRoots, pSources);
    }
    std::vector<std::string> Diagnosis(const Nodes& nodes, unsigned char bUsePdmNodes) const
    {
        return DiagnosisOf([&] { return Add(nodes, FALSE, bUsePdmNodes); });
    }
    static Nodes List(const std::vector<CATBaseUnknown_var>& nodes)
    {
        Nodes list;
        for (const CATBaseUnknown_var& spNode : nodes) {
            list.Append(spNode);
        }
        return list;
    }
    // Rep nodes of another container.
    QTBIRepNode_var CreateElsewhere(const char* key)
    {
        if (m_spOther == NULL_var) {
            m_spOther = CreateCont();
        }
        QTBIRepNode_var spNew;
        EXPECT_THAT(Extension(m_spOther)->CreateRepNode(NULL_var, PdmNode(key), &spNew, PARTS, nullptr, nullptr),
                    Succeeds());
        return spNew;
    }
    void TearDown() override
    {
        m_spOther = NULL_var;
        RepNodeCreation::TearDown();
    }

    QTBIRepNodeCont_var m_spOther;
};

TEST_F(NewRoots, AreMadeForTheObjectsOfRepNodes)
{
    const QTBIRepNode_var b = CreateElsewhere("B");
    const QTBIRepNode_var ab = CreateElsewhere("AB");
    const QTBIRepNode_var a = CreateElsewhere("A");
    Nodes newRoots = List({a});
    Nodes sources = List({a});
    EXPECT_THAT(Add(List({b, ab, a, b}), FALSE, FALSE, &newRoots, &sources), Succeeds());
    EXPECT_THAT(TreesOf(m_spCont), ElementsAre("A", "B", "B"));
    EXPECT_THAT(PdmKeysOf(newRoots), ElementsAre("B", "A", "B"));
    EXPECT_TRUE(sources == List({b, a, b}));
    EXPECT_THAT(Add(List({a}), FALSE, FALSE), Succeeds());
    EXPECT_THAT(TreesOf(m_spCont), ElementsAre("A", "A", "B", "B"));
}

TEST_F(NewRoots, AreMadeOncePerPdmObjectOnRequest)
{
    const QTBIRepNode_var b = CreateElsewhere("B");
    const QTBIRepNode_var spSecond = CreateElsewhere("B");
    Nodes newRoots = List({b});
    Nodes sources = List({b});
    EXPECT_THAT(Add(List({b, spSecond, CreateElsewhere("AB"), CreateElsewhere("A")}), FALSE, TRUE, &newRoots, &sources),
                Succeeds());
    EXPECT_THAT(TreesOf(m_spCont), ElementsAre("A", "B"));
    EXPECT_EQ(newRoots.Size() + sources.Size(), 0) << "emptied, nothing appended";
}

TEST_F(NewRoots, TakeThePlaceOfAllTreesOnRequest)
{
    Create(CreateRoot("A"), "AB");
    EXPECT_THAT(Add(List({CreateElsewhere("B")}), TRUE, FALSE), Succeeds());
    EXPECT_THAT(TreesOf(m_spCont), ElementsAre("B"));
    EXPECT_THAT(Add(List({}), TRUE, TRUE), Succeeds());
    EXPECT_THAT(TreesOf(m_spCont), IsEmpty());
}

TEST_F(NewRoots, CheckTheGivenNodes)
{
    const QTBIRepNode_var b = CreateElsewhere("B");
    const CATBaseUnknown_var spNoRepNode = CreateLoose("QTBNode");
    EXPECT_THAT(Diagnosis(List({spNoRepNode}), FALSE), ElementsAre(Handle("spIRepNode")));
    EXPECT_THAT(Diagnosis(List({spNoRepNode}), TRUE),
                ElementsAre(Handle("spIRepNode"), Call("GetPdmNodesFromRepNodeList")));
    {
        const QTBFault fault("GetPdmNode", b);
        EXPECT_THAT(Diagnosis(List({b}), FALSE), ElementsAre(Call("spIRepNode->GetPdmNode")));
        EXPECT_THAT(Diagnosis(List({b}), TRUE),
                    ElementsAre(Call("spIRepNode->GetPdmNode"), Call("GetPdmNodesFromRepNodeList")));
    }
    {
        const QTBFault fault("GetKey", FindNode("B"));
        EXPECT_THAT(Diagnosis(List({b}), FALSE),
                    ElementsAre(Call("spINodeAttributesOnPdmNode->GetKey"), Call("CreateRepNode")));
        EXPECT_THAT(Diagnosis(List({b}), TRUE),
                    ElementsAre(Call("spINodeAttributesOnPdmNode->GetKey"), Call("CreateRepNode")));
    }
    File(spNoRepNode);
    EXPECT_THAT(DiagnosisOf([&] { return Add(List({b}), TRUE, FALSE); }),
                ElementsAre(Assertion("spIRepNodeOnNode != NULL_var"), Call("GetRepRootNodes"), Call("Clear")));
    TakeOut(spNoRepNode);
    Unlink(b);
    EXPECT_THAT(Diagnosis(List({b}), FALSE), ElementsAre(Call("spIRepNode->RepresentsPdmObjNode")));
}

TEST_F(NewRoots, ComeFromPdmNodesSplitIntoObjectsAndRelations)
{
    Nodes objects = List({FindNode("A")});
    Nodes relations = List({FindNode("A")});
    const auto split = [&](const Nodes& nodes, Nodes* pObjects, Nodes* pRelations) {
        return QTBERepNodeContOnRepNodeCont::GetPdmNodesFromRepNodeList(nodes, pObjects, pRelations);
    };
    EXPECT_THAT(split(List({CreateRoot("B"), CreateRoot("AB"), CreateRoot("A"), CreateRoot("B"), CreateRoot("AB")}),
                      &objects, &relations),
                Succeeds());
    EXPECT_THAT(KeysOf(objects), ElementsAre("B", "A"));
    EXPECT_THAT(KeysOf(relations), ElementsAre("AB"));
    EXPECT_THAT(split(Nodes(), nullptr, &relations), FailsAssertion("pPdmObjNodes != NULL"));
    EXPECT_THAT(split(Nodes(), &objects, nullptr), FailsAssertion("pPdmRelNodes != NULL"));
}

} // namespace
