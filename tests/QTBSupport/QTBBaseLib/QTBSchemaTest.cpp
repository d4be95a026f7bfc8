#include "QTBSchema.h"

#include <gmock/gmock.h>

#include "QTBPdmTree.h"
#include "QTBSchemaFixture.h"

using ::testing::ElementsAre;

namespace {

class Schema : public QTBSchemaFixture
{
protected:
    static std::string Name(const CATUnicodeString& text) { return std::string(text.View()); }

    static std::vector<std::string> Names(const QTBSchemaForm& form)
    {
        std::vector<std::string> names;
        for (int i = 1; i <= form.GetFormAttrCount(); ++i) {
            QTBSchemaAttributeRep* pRep = nullptr;
            EXPECT_EQ(form.GetFormAttrPtr(i, &pRep), S_OK);
            names.push_back(Name(pRep->GetName()));
        }
        return names;
    }

    static std::vector<std::string> LeftObjects(const QTBSchemaRelation& relation)
    {
        std::vector<std::string> names;
        for (int i = 1; i <= relation.GetLeftObjectCount(); ++i) {
            CATUnicodeString name;
            EXPECT_EQ(relation.GetLeftObjectName(i, &name), S_OK);
            names.push_back(Name(name));
        }
        return names;
    }

    static std::vector<std::string> RightObjects(const QTBSchemaRelation& relation)
    {
        std::vector<std::string> names;
        for (int i = 1; i <= relation.GetRightObjectCount(); ++i) {
            CATUnicodeString name;
            EXPECT_EQ(relation.GetRightObjectName(i, &name), S_OK);
            names.push_back(Name(name));
        }
        return names;
    }
};

} // namespace

TEST_F(Schema, NamesTheAttributesThatIdentifyItems)
{
    EXPECT_EQ(Current().GetClassAttr(), "Class");
    EXPECT_EQ(Current().GetKeyAttr(), "Key");
    EXPECT_EQ(Current().GetRelationAttr(), "Relation");
    EXPECT_EQ(Current().GetLeftRelationshipAttr(), "Left");
    EXPECT_EQ(Current().GetRightRelationshipAttr(), "Right");
    EXPECT_EQ(Current().GetLeftRelationClassAttr(), "Class1");
    EXPECT_EQ(Current().GetRightRelationClassAttr(), "Class2");
}

TEST_F(Schema, HasNoLimitOfLevelsUnlessItNamesOne)
{
    int level = 0;
    ASSERT_EQ(Current().GetMaxExpansionLevel(&level), S_OK);
    EXPECT_EQ(level, -1);
    EXPECT_EQ(Current().GetMaxExpansionLevel(nullptr), E_POINTER);
    ASSERT_EQ(Load(QTBSchemaFixture::Schema(R"(<object name="Part"/>)", "", "", R"(maxExpansionLevel="3")")), S_OK);
    ASSERT_EQ(Current().GetMaxExpansionLevel(&level), S_OK);
    EXPECT_EQ(level, 3);
}

TEST_F(Schema, FindsClassesByNameAndByPosition)
{
    QTBSchemaObject* pObject = nullptr;
    QTBSchemaRelation* pRelation = nullptr;
    ASSERT_EQ(Current().GetObjectPtr("Part", &pObject), S_OK);
    EXPECT_EQ(pObject->GetName(), "Part");
    ASSERT_EQ(Current().GetObjectPtr(2, &pObject), S_OK);
    EXPECT_EQ(pObject->GetName(), "StandardPart");
    ASSERT_EQ(Current().GetRelationPtr("PartFile", &pRelation), S_OK);
    EXPECT_EQ(pRelation->GetName(), "PartFile");
    ASSERT_EQ(Current().GetRelationPtr(1, &pRelation), S_OK);
    EXPECT_EQ(pRelation->GetName(), "PartPart");
    EXPECT_EQ(Current().FindClass("PartFile")->GetName(), "PartFile");
    EXPECT_EQ(Current().FindClass("Person")->GetName(), "Person");
}

TEST_F(Schema, UnknownClassesAreAQuietFailure)
{
    QTBSchemaObject* pObject = nullptr;
    QTBSchemaRelation* pRelation = nullptr;
    EXPECT_EQ(Current().GetObjectPtr("PartPart", &pObject), E_FAIL);
    EXPECT_EQ(Current().GetObjectPtr("part", &pObject), E_FAIL);
    EXPECT_EQ(Current().GetObjectPtr(0, &pObject), E_FAIL);
    EXPECT_EQ(Current().GetObjectPtr(13, &pObject), E_FAIL);
    EXPECT_EQ(Current().GetRelationPtr("Part", &pRelation), E_FAIL);
    EXPECT_EQ(Current().GetRelationPtr(7, &pRelation), E_FAIL);
    EXPECT_EQ(pObject, nullptr);
    EXPECT_EQ(pRelation, nullptr);
    EXPECT_EQ(Current().FindClass("Unknown"), nullptr);
    EXPECT_EQ(Current().GetObjectPtr("Part", nullptr), E_POINTER);
    EXPECT_EQ(Current().GetRelationPtr(1, nullptr), E_POINTER);
}

TEST_F(Schema, DescribesANodeByAttributesOfItselfAndOfEmbeddedObjects)
{
    QTBSchemaDescription* pDescription = Object("Document").GetDescriptionPtr();
    ASSERT_NE(pDescription, nullptr);
    ASSERT_EQ(pDescription->GetDescAttrCount(), 3);
    QTBSchemaAttributeRep* pRep = nullptr;
    ASSERT_EQ(pDescription->GetDescAttrPtr(1, &pRep), S_OK);
    EXPECT_EQ(pRep->GetName(), "DocumentNumber");
    EXPECT_TRUE(pRep->GetEmbeddedObjAttr().IsEmpty());
    ASSERT_EQ(pDescription->GetDescAttrPtr(3, &pRep), S_OK);
    EXPECT_EQ(pRep->GetName(), "FullName");
    EXPECT_EQ(pRep->GetEmbeddedObjAttr(), "Owner");
    EXPECT_EQ(pDescription->GetDescAttrPtr(0, &pRep), E_FAIL);
    EXPECT_EQ(pDescription->GetDescAttrPtr(4, &pRep), E_FAIL);
    EXPECT_EQ(pDescription->GetDescAttrPtr(1, nullptr), E_POINTER);
    EXPECT_EQ(pDescription->FindEmbeddedDescAttr("FullName"), pRep);
    EXPECT_EQ(pDescription->FindEmbeddedDescAttr("Name"), nullptr);
}

TEST_F(Schema, AClassWithoutDescriptionHasNone)
{
    EXPECT_EQ(Relation("PartFile").GetDescriptionPtr(), nullptr);
}

TEST_F(Schema, FormsAreFoundByName)
{
    QTBSchemaForm* pForm = nullptr;
    ASSERT_EQ(Object("Part").GetFormPtr("UpdateItem", &pForm), S_OK);
    EXPECT_EQ(pForm->GetName(), "UpdateItem");
    EXPECT_THAT(Names(*pForm), ElementsAre("Name", "Description", "Material"));
    EXPECT_EQ(Object("Person").GetFormPtr("UpdateItem", &pForm), E_FAIL);
    EXPECT_EQ(Object("Part").GetFormPtr("Properties", nullptr), E_POINTER);
}

TEST_F(Schema, ContextActionsSayWhereTheyAreOffered)
{
    const QTBSchemaObject& part = Object("Part");
    EXPECT_EQ(part.ShowContextAction("Expand"), TRUE);
    EXPECT_EQ(part.ShowContextActionIn("Expand"), "PdmWindow QueryDialog");
    EXPECT_EQ(part.ShowContextActionIn("DeExpand"), "PdmWindow");
    EXPECT_EQ(part.ShowContextActionIn("DeleteItem"), "QueryDialog");
    EXPECT_EQ(part.ShowContextAction("CheckIn"), FALSE);
    EXPECT_TRUE(part.ShowContextActionIn("CheckIn").IsEmpty());
}

TEST_F(Schema, ASubclassHasWhatItDoesNotSayItselfFromItsParent)
{
    const QTBSchemaObject& part = Object("Part");
    const QTBSchemaObject& standardPart = Object("StandardPart");
    EXPECT_EQ(standardPart.GetParentPtr(), &part);
    EXPECT_TRUE(standardPart.IsKindOf("Part"));
    EXPECT_TRUE(standardPart.IsKindOf("StandardPart"));
    EXPECT_FALSE(part.IsKindOf("StandardPart"));
    EXPECT_EQ(standardPart.GetDescriptionPtr(), part.GetDescriptionPtr());
    EXPECT_EQ(standardPart.GetTooltipAttrName(), "Description");
    QTBSchemaForm* pForm = nullptr;
    QTBSchemaForm* pFormOfParent = nullptr;
    EXPECT_EQ(standardPart.GetFormPtr("Properties", &pForm), S_OK);
    EXPECT_EQ(part.GetFormPtr("Properties", &pFormOfParent), S_OK);
    EXPECT_EQ(pForm, pFormOfParent);
    EXPECT_EQ(standardPart.ShowContextAction("Expand"), TRUE);
    EXPECT_EQ(standardPart.GetCustomExpandPdmTreeCount(), 2);
    EXPECT_EQ(standardPart.GetPartToFilePdmTreePtr(), part.GetPartToFilePdmTreePtr());
}

TEST_F(Schema, ASubclassCanSayOtherwise)
{
    const QTBSchemaObject& standardPart = Object("StandardPart");
    EXPECT_EQ(standardPart.GetIconName(), "QTBStandardPart");
    EXPECT_EQ(standardPart.GetNlsKey(), "Class.StandardPart");
    EXPECT_EQ(standardPart.ShowContextAction("Revise"), FALSE);
    EXPECT_EQ(Object("Part").ShowContextAction("Revise"), TRUE);
    EXPECT_EQ(standardPart.IsPart(), TRUE);
    EXPECT_EQ(standardPart.CanHaveSubParts(), FALSE);
    EXPECT_EQ(standardPart.CanBeCatPart(), TRUE);
}

TEST_F(Schema, ASubclassOfPartsThatSaysNothingIsAPartLikeItsParent)
{
    ASSERT_EQ(Load(QTBSchemaFixture::Schema(
                  R"(<object name="Part"><part subParts="true"/></object><object name="Engine" parent="Part"/>)")),
              S_OK);
    EXPECT_EQ(Object("Engine").IsPart(), TRUE);
    EXPECT_EQ(Object("Engine").CanHaveSubParts(), TRUE);
    EXPECT_EQ(Object("Engine").CanBeCatPart(), FALSE);
    EXPECT_THAT(Texts(Current().GetPartClassNames()), ElementsAre("Part", "Engine"));
}

TEST_F(Schema, CustomExpandTreesAreCountedFromOne)
{
    const QTBSchemaObject& part = Object("Part");
    ASSERT_EQ(part.GetCustomExpandPdmTreeCount(), 2);
    QTBPdmTree* pPdmTree = nullptr;
    ASSERT_EQ(part.GetCustomExpandPdmTreePtr(1, &pPdmTree), S_OK);
    EXPECT_EQ(pPdmTree->GetName(), "PartsAndFiles");
    EXPECT_EQ(pPdmTree->GetNlsKey(), "PdmTree.PartsAndFiles");
    CATListValQTBNodeRelationInfo infos;
    ASSERT_EQ(pPdmTree->GetAllPdmTreeRels(&infos, FALSE), S_OK);
    ASSERT_EQ(infos.Size(), 2);
    EXPECT_EQ(infos[1], QTBNodeRelationInfo("PartFile", usLEFT_TO_RIGHT));
    EXPECT_EQ(infos[2], QTBNodeRelationInfo("PartPart", usLEFT_TO_RIGHT));
    EXPECT_EQ(part.GetCustomExpandPdmTreePtr(3, &pPdmTree), E_FAIL);
    EXPECT_EQ(Object("Person").GetCustomExpandPdmTreeCount(), 0);
    EXPECT_EQ(Object("Person").GetCustomExpandPdmTreePtr(1, &pPdmTree), E_FAIL);
}

TEST_F(Schema, RelationsEndAtTheNamedClassesAndTheirSubclasses)
{
    EXPECT_THAT(LeftObjects(Relation("PartPart")), ElementsAre("Part", "StandardPart"));
    EXPECT_THAT(RightObjects(Relation("PartFile")),
                ElementsAre("File", "CATProductFile", "CATPartFile", "CATDrawingFile", "CMIArchiveFile", "CGRFile",
                            "DesignTableFile", "V4ModelFile"));
    CATUnicodeString name;
    EXPECT_EQ(Relation("PartPart").GetLeftObjectName(3, &name), E_FAIL);
    EXPECT_EQ(Relation("PartPart").GetLeftObjectName(0, &name), E_FAIL);
    EXPECT_EQ(Relation("PartPart").GetRightObjectName(1, nullptr), E_POINTER);
}

TEST_F(Schema, EachClassStandsOnceAtAnEnd)
{
    ASSERT_EQ(Load(QTBSchemaFixture::Schema(
                  R"(<object name="Part"/><object name="Screw" parent="Part"/><object name="File"/>)",
                  R"(<relation name="R"><left class="Screw"/><left class="Part"/><left class="File"/>
                     <right class="Part"/></relation>)")),
              S_OK);
    EXPECT_THAT(LeftObjects(Relation("R")), ElementsAre("Screw", "Part", "File"));
}

TEST_F(Schema, NewObjectsAreOfTheFirstClassOfAnEnd)
{
    CATUnicodeString name;
    ASSERT_EQ(Relation("PartDocument").GetLeftClassName(&name), S_OK);
    EXPECT_EQ(name, "Part");
    ASSERT_EQ(Relation("PartDocument").GetRightClassName(&name), S_OK);
    EXPECT_EQ(name, "Document");
}

TEST_F(Schema, RelationsAreNamedInBothDirections)
{
    const QTBSchemaRelation& relation = Relation("PartPart");
    ASSERT_NE(relation.GetLeftToRightRelationshipPtr(), nullptr);
    EXPECT_EQ(relation.GetLeftToRightRelationshipPtr()->GetName(), "consists of");
    EXPECT_EQ(relation.GetLeftToRightRelationshipPtr()->GetNlsKey(), "Relation.PartPart.LeftToRight");
    EXPECT_EQ(relation.GetLeftToRightRelationshipPtr()->GetMultiExpand(), "true");
    ASSERT_NE(relation.GetRightToLeftRelationshipPtr(), nullptr);
    EXPECT_EQ(relation.GetRightToLeftRelationshipPtr()->GetName(), "is used in");
    EXPECT_EQ(Relation("PartFile").GetLeftToRightRelationshipPtr()->GetMultiExpand(), "false");
    EXPECT_EQ(relation.GetSingleExpand(), "true");
    EXPECT_EQ(relation.GetContextCreate(), "true");
}

TEST_F(Schema, ARelationThatCannotBeFollowedHasNoRelationship)
{
    ASSERT_EQ(Load(QTBSchemaFixture::Schema(
                  R"(<object name="Part"/>)",
                  R"(<relation name="R"><left class="Part"/><right class="Part"/><leftToRight name="x"/></relation>)")),
              S_OK);
    EXPECT_NE(Relation("R").GetLeftToRightRelationshipPtr(), nullptr);
    EXPECT_EQ(Relation("R").GetRightToLeftRelationshipPtr(), nullptr);
    EXPECT_TRUE(Relation("R").GetSingleExpand().IsEmpty());
}

TEST_F(Schema, ARelationSubclassKeepsTheEndsThatItDoesNotName)
{
    const QTBSchemaRelation& relation = Relation("StandardPartUsage");
    EXPECT_TRUE(relation.IsKindOf("PartPart"));
    EXPECT_THAT(LeftObjects(relation), ElementsAre("Part", "StandardPart"));
    EXPECT_THAT(RightObjects(relation), ElementsAre("StandardPart"));
    EXPECT_EQ(relation.GetSingleExpand(), "true");
    EXPECT_EQ(relation.GetContextCreate(), "false");
    EXPECT_EQ(relation.GetLeftToRightRelationshipPtr()->GetName(), "uses standard part");
}

TEST_F(Schema, DataSourcesHoldValuesInOrder)
{
    QTBSchemaAttribute* pAttribute = Current().FindAttribute("State");
    ASSERT_NE(pAttribute, nullptr);
    EXPECT_EQ(pAttribute->GetDataSourceName(), "States");
    EXPECT_EQ(pAttribute->GetNlsKey(), "Attribute.State");
    QTBSchemaDataSource* pDataSource = Current().FindDataSource("States");
    ASSERT_NE(pDataSource, nullptr);
    ASSERT_EQ(pDataSource->GetValuesCount(), 4);
    QTBSchemaValue* pValue = nullptr;
    ASSERT_EQ(pDataSource->GetValuePtr(2, &pValue), S_OK);
    EXPECT_EQ(pValue->GetName(), "20");
    EXPECT_EQ(pValue->GetDisplayName(), "State.InReview");
    EXPECT_EQ(pDataSource->GetValuePtr(5, &pValue), E_FAIL);
    EXPECT_EQ(pDataSource->GetValuePtr(1, nullptr), E_POINTER);
    EXPECT_TRUE(Current().FindAttribute("Name")->GetDataSourceName().IsEmpty());
}

TEST_F(Schema, BehaviorsStandInOrder)
{
    QTBCatiaNodeBehaviorDefinitions* pDefinitions = Current().GetCatiaNodeBehaviorDefinitionsPtr();
    ASSERT_NE(pDefinitions, nullptr);
    ASSERT_EQ(pDefinitions->GetCatiaNodeBehaviorCount(), 3);
    QTBCatiaNodeBehavior* pBehavior = nullptr;
    ASSERT_EQ(pDefinitions->GetCatiaNodeBehaviorPtr(1, &pBehavior), S_OK);
    EXPECT_EQ(pBehavior->GetNodeType(), usCATPRODUCT);
    EXPECT_EQ(pBehavior->GetPartNumberPrefix(), "SKELETON_");
    EXPECT_EQ(pBehavior->GetBehavior(), usIGNORE_NODE);
    ASSERT_EQ(pDefinitions->GetCatiaNodeBehaviorPtr(3, &pBehavior), S_OK);
    EXPECT_EQ(pBehavior->GetNodeType(), usEMBCOMP);
    EXPECT_TRUE(pBehavior->GetPartNumberPrefix().IsEmpty());
    EXPECT_EQ(pBehavior->GetBehavior(), usSKIP_NODE);
    EXPECT_EQ(pDefinitions->GetCatiaNodeBehaviorPtr(4, &pBehavior), E_FAIL);
}

TEST_F(Schema, AnUnknownBehaviorIsHandedOnAsItIs)
{
    ASSERT_EQ(Load(QTBSchemaFixture::Schema(
                  R"(<object name="Part"/>)", "",
                  R"(<nodeBehaviors><nodeBehavior nodeType="CATProduct" behavior="OTHER"/></nodeBehaviors>)")),
              S_OK);
    QTBCatiaNodeBehavior* pBehavior = nullptr;
    ASSERT_EQ(Current().GetCatiaNodeBehaviorDefinitionsPtr()->GetCatiaNodeBehaviorPtr(1, &pBehavior), S_OK);
    EXPECT_EQ(pBehavior->GetBehavior(), "OTHER");
}
