#include "QTBEInfoNodeOnInfoNode.h"

#include <gmock/gmock.h>

#include "CATInstantiateComponent.h"
#include "QTBIInfoNode.h"
#include "QTBINode.h"
#include "QTBINodeAttributes.h"
#include "QTBINodeRelations.h"
#include "QTBIPdmNode.h"
#include "QTBIRepNode.h"
#include "QTBMatchers.h"
#include "QTBTestSession.h"
#include "QTBXmlElement.h"

namespace {

class InfoNode : public QTBTestSession
{
protected:
    static CATBaseUnknown_var Create()
    {
        void* pNode = nullptr;
        EXPECT_THAT(::CATInstantiateComponent("QTBInfoNode", CLSID_CATBaseUnknown, &pNode), Succeeds());
        return CATBaseUnknown_var::Adopt(static_cast<CATBaseUnknown*>(pNode));
    }
};

TEST_F(InfoNode, MadeByNameAnswersItsMarkerAndTheInterfacesOfANodeAndNoOthers)
{
    const CATBaseUnknown_var spNode = Create();
    EXPECT_TRUE(QTBIInfoNode_var(spNode) != NULL_var);
    EXPECT_TRUE(QTBINode_var(spNode) != NULL_var);
    EXPECT_TRUE(QTBINodeAttributes_var(spNode) != NULL_var);
    EXPECT_TRUE(QTBINodeRelations_var(spNode) != NULL_var);
    EXPECT_TRUE(QTBIPdmNode_var(spNode) == NULL_var);
    EXPECT_TRUE(QTBIRepNode_var(spNode) == NULL_var);
    EXPECT_TRUE(spNode->IsAKindOf("QTBNode"));
}

TEST_F(InfoNode, IsToldFromOtherNodesByItsMarker)
{
    void* pNode = nullptr;
    EXPECT_THAT(::CATInstantiateComponent("QTBNode", CLSID_CATBaseUnknown, &pNode), Succeeds());
    EXPECT_TRUE(QTBIInfoNode_var(CATBaseUnknown_var::Adopt(static_cast<CATBaseUnknown*>(pNode))) == NULL_var);
}

TEST_F(InfoNode, HasNeitherDescriptionNorPdmClass)
{
    const QTBINode_var spINode(Create());
    CATUnicodeString usText;
    EXPECT_THAT(spINode->GetNodeDescriptionString(&usText), Succeeds());
    EXPECT_EQ(usText, "?");
    usText = "";
    EXPECT_THAT(spINode->GetPdmClass(&usText), Succeeds());
    EXPECT_EQ(usText, "?");
}

TEST_F(InfoNode, CarriesAKeyAttributesAndRelations)
{
    const CATBaseUnknown_var spNode = Create();
    const CATBaseUnknown_var spOther = Create();
    const QTBINodeAttributes_var spINodeAttributes(spNode);
    const QTBINodeRelations_var spINodeRelations(spNode);
    EXPECT_THAT(spINodeAttributes->SetKey("Info-1"), Succeeds());
    EXPECT_EQ(KeyOf(spNode), "Info-1");
    EXPECT_THAT(spINodeAttributes->SetXmlElement(ReadXmlElement(R"(<o><a name="Text">Hint</a></o>)")), Succeeds());
    EXPECT_EQ(AttributeOf(spNode, "Text"), "Hint");
    EXPECT_THAT(spINodeRelations->AddRightNode("Hints", spOther, 1, TRUE), Succeeds());
    CATListValCATBaseUnknown_var nodes;
    EXPECT_THAT(QTBINodeRelations_var(spOther)->GetLeftNodeList("Hints", &nodes, ALL_NODES), Succeeds());
    ASSERT_EQ(nodes.Size(), 1);
    EXPECT_EQ(nodes[1], spNode);
    EXPECT_THAT(spINodeRelations->RemoveAllRels(nullptr), Succeeds());
}

} // namespace
