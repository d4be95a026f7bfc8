#include "QTBELinkToPsnOnRepNode.h"

#include <gmock/gmock.h>

#include "QTBPartInstanceInfo.h"
#include "QTBRepTreeSession.h"
#include "QTBTraceUtil.h"

using QTBDiagnosis::Call;
using QTBDiagnosis::DiagnosesIn;
using QTBDiagnosis::DiagnosisOf;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

namespace {

// A(AB(B(BC(C(CF(F))))) AZ(Z)): parts A to C with the file F, and the archive Z of A.
class PathToRootPart : public QTBFaultyRepTreeSession
{
protected:
    void SetUp() override
    {
        QTBFaultyRepTreeSession::SetUp();
        Update(Part("A", Attribute("PartNumber", "4711")) + Part("B", Attribute("PartNumber", "4712")) +
               Part("C", Attribute("PartNumber", "4713")) +
               Object("CATPartFile", "F", Attribute("FileName", "c.CATPart")) +
               Object("CMIArchiveFile", "Z",
                      Attribute("FileName", "a.zip") + Info({{"QtbArchiveRootFileName", "a.CATProduct"}})) +
               PartPart("AB", "A", "B", R"(<a name="InstanceName" type="list"><v>B.1</v><v>B.2</v></a>)") +
               PartPart("BC", "B", "C", Attribute("InstanceName", "C.1")) + Relation("PartFile", "CF", "C", "F") +
               Relation("PartFile", "AZ", "A", "Z"));
        a = CreateRoot("A");
        ab = Create(a, "AB");
        b = Create(ab, "B");
        bc = Create(b, "BC");
        c = Create(bc, "C");
        f = Create(Create(c, "CF", FILES), "F", FILES);
        z = Create(Create(a, "AZ", FILES), "Z", FILES);
    }

    void TearDown() override
    {
        a = ab = b = bc = c = f = z = NULL_var;
        QTBFaultyRepTreeSession::TearDown();
    }

    // The steps as "part number/name,name".
    static std::vector<std::string> StepsOf(const CATListValQTBPartInstanceInfo& path)
    {
        std::vector<std::string> steps;
        for (const QTBPartInstanceInfo& step : path) {
            CATUnicodeString usPartNumber;
            CATListValCATUnicodeString names;
            EXPECT_THAT(step.GetInstanceInfo(&usPartNumber, &names), Succeeds());
            std::string text = TextOf(usPartNumber) + "/";
            for (int i = 1; i <= names.Size(); ++i) {
                text += (i > 1 ? "," : "") + TextOf(names[i]);
            }
            steps.push_back(text);
        }
        return steps;
    }
    static HRESULT TryPath(const QTBIRepNode_var& spIRepNode, CATUnicodeString* pusPartNumber = nullptr,
                           CATUnicodeString* pusFileName = nullptr)
    {
        CATListValQTBPartInstanceInfo path;
        return QTBILinkToPsn_var(spIRepNode)->GetPathToRootPartInstanceInfo(&path, pusPartNumber, pusFileName);
    }
    static std::vector<std::string> Path(const QTBIRepNode_var& spIRepNode)
    {
        CATListValQTBPartInstanceInfo path;
        EXPECT_THAT(QTBILinkToPsn_var(spIRepNode)->GetPathToRootPartInstanceInfo(&path, nullptr, nullptr), Succeeds());
        return StepsOf(path);
    }
    static std::vector<std::string> Diagnosis(const QTBIRepNode_var& spIRepNode)
    {
        return DiagnosisOf([&] { return TryPath(spIRepNode); });
    }

    QTBIRepNode_var a, ab, b, bc, c, f, z;
};

TEST_F(PathToRootPart, OfAPartLeadsFromTheRootDown)
{
    EXPECT_THAT(Path(c), ElementsAre("4711/B.1,B.2", "4712/C.1"));
    EXPECT_THAT(Path(b), ElementsAre("4711/B.1,B.2"));
    EXPECT_THAT(Path(a), IsEmpty());
}

TEST_F(PathToRootPart, OfARelationIsThatOfItsPart)
{
    EXPECT_THAT(Path(bc), ElementsAre("4711/B.1,B.2", "4712/C.1"));
    EXPECT_THAT(Remove(c), Succeeds());
    EXPECT_TRUE(Diagnosis(bc).empty()) << "quietly none without its part";
}

TEST_F(PathToRootPart, OfAFileIsThatOfTheNextPartAbove)
{
    EXPECT_THAT(Path(f), ElementsAre("4711/B.1,B.2", "4712/C.1"));
    EXPECT_THAT(Path(z), IsEmpty());
}

TEST_F(PathToRootPart, IsAppendedToTheList)
{
    CATListValQTBPartInstanceInfo path;
    EXPECT_THAT(QTBILinkToPsn_var(b)->GetPathToRootPartInstanceInfo(&path, nullptr, nullptr), Succeeds());
    EXPECT_THAT(QTBILinkToPsn_var(b)->GetPathToRootPartInstanceInfo(&path, nullptr, nullptr), Succeeds());
    EXPECT_THAT(StepsOf(path), ElementsAre("4711/B.1,B.2", "4711/B.1,B.2"));
}

TEST_F(PathToRootPart, GivesThePartNumberOnRequest)
{
    for (const QTBIRepNode_var& spIRepNode : {c, bc, f}) {
        CATUnicodeString usPartNumber;
        EXPECT_THAT(TryPath(spIRepNode, &usPartNumber), Succeeds());
        EXPECT_EQ(usPartNumber, "4713");
    }
    CATUnicodeString usPartNumber;
    const DebugCapture capture;
    EXPECT_THAT(TryPath(c, &usPartNumber), Succeeds());
    EXPECT_THAT(capture.Lines(), Contains("QTBELinkToPsnOnRepNode::GetPathToRootPartInstanceInfo -> " +
                                          TextOf(QTBTraceUtil::GetNodeString(c, FALSE)) +
                                          ": part number attribute:[PartNumber] -> [4713]"));
}

TEST_F(PathToRootPart, OnlyTellsThatThePartNumberCannotBeRead)
{
    Update(Part("P"));
    const QTBIRepNode_var spPart = CreateRoot("P");
    CATUnicodeString usPartNumber("before");
    const DebugCapture capture;
    EXPECT_THAT(TryPath(spPart, &usPartNumber), Succeeds());
    EXPECT_EQ(usPartNumber, "before");
    EXPECT_THAT(capture.Text(), HasSubstr(" File:["));
    EXPECT_THAT(capture.Text(), HasSubstr("], Line:["));
}

TEST_F(PathToRootPart, NeedsTheNameOfThePartNumberAttributeOnlyForThePartNumber)
{
    LoadEditedSchema({{R"( partNumberAttr="PartNumber")", ""}});
    CATUnicodeString usPartNumber;
    EXPECT_THAT(DiagnosisOf([&] { return TryPath(a, &usPartNumber); }),
                ElementsAre(Call("QTBPdmSessionUtil::GetPdmSessionStringAttrValue")));
    EXPECT_THAT(TryPath(a), Succeeds());
}

TEST_F(PathToRootPart, GivesTheFileNameOnRequest)
{
    CATUnicodeString usFileName;
    EXPECT_THAT(TryPath(f, nullptr, &usFileName), Succeeds());
    EXPECT_EQ(usFileName, "c.CATPart");
    EXPECT_THAT(TryPath(z, nullptr, &usFileName), Succeeds());
    EXPECT_EQ(usFileName, "a.CATProduct") << "that of the archive's root file";
    usFileName = "before";
    EXPECT_THAT(TryPath(c, nullptr, &usFileName), Succeeds());
    EXPECT_EQ(usFileName, "before") << "a part has none";
}

TEST_F(PathToRootPart, OfAFileWithoutPartAboveIsMissedQuietlyWithTheFileNameWritten)
{
    const QTBIRepNode_var spFile = CreateRoot("F");
    CATUnicodeString usFileName;
    EXPECT_TRUE(DiagnosisOf([&] { return TryPath(spFile, nullptr, &usFileName); }).empty());
    EXPECT_EQ(usFileName, "c.CATPart");
}

TEST_F(PathToRootPart, OfAnythingElseIsMissedQuietly)
{
    Update(Object("Document", "D"));
    EXPECT_TRUE(Diagnosis(CreateRoot("D")).empty());
    EXPECT_TRUE(Diagnosis(CreateRoot("CF")).empty());
}

TEST_F(PathToRootPart, IsMissedQuietlyWhenInstanceNameOrPartNumberAreNotDefined)
{
    Update(Part("P") + PartPart("BP", "B", "P") + PartPart("PC", "P", "C", Attribute("InstanceName", "C.2")) +
           PartPart("AP", "A", "P", Attribute("InstanceName", "")));
    const QTBIRepNode_var spWithoutName = Create(Create(b, "BP"), "P");
    EXPECT_TRUE(Diagnosis(spWithoutName).empty());
    EXPECT_TRUE(Diagnosis(Create(Create(a, "AP"), "P")).empty()) << "an empty name is none";
    const QTBIRepNode_var spBelowPartWithoutNumber = Create(Create(CreateRoot("P"), "PC"), "C");
    EXPECT_TRUE(Diagnosis(spBelowPartWithoutNumber).empty());
}

TEST_F(PathToRootPart, IsMissedQuietlyWhenSomethingElseThanPartsIsAbove)
{
    Update(Object("Document", "D") + Relation("PartDocument", "CD", "C", "D"));
    const QTBNodeRelationInfo documented("PartDocument", usRIGHT_TO_LEFT);
    EXPECT_TRUE(Diagnosis(Create(Create(CreateRoot("D"), "CD", documented), "C", documented)).empty());
    EXPECT_TRUE(Diagnosis(Create(Create(CreateRoot("D"), "AB"), "B")).empty());
}

TEST_F(PathToRootPart, ChecksTheFile)
{
    Update(Object("CATPartFile", "WithoutName") + Object("CMIArchiveFile", "WithoutRoot"));
    CATUnicodeString usFileName;
    const auto diagnosis = [&](const QTBIRepNode_var& spIRepNode) {
        return DiagnosisOf([&] { return TryPath(spIRepNode, nullptr, &usFileName); });
    };
    EXPECT_THAT(diagnosis(CreateRoot("WithoutName")), ElementsAre(Call("QTBFileUtil::GetFileName")));
    EXPECT_THAT(diagnosis(CreateRoot("WithoutRoot")), ElementsAre(Call("QTBArchiveUtil::GetRootFileName")));
    {
        const QTBFault fault("GetPdmNode", f, 3);
        EXPECT_THAT(diagnosis(f), ElementsAre(Call("spIRepNode->GetPdmNode")));
    }
    // The class is asked for to tell a part, then a file.
    const QTBFault fault("GetClassAttr", FindNode("F"), 2);
    EXPECT_THAT(diagnosis(f), ElementsAre(Call("QTBPdmGraphUtil::GetCatiaFileNodeInformation")));
}

TEST_F(PathToRootPart, ChecksWhatItNeeds)
{
    EXPECT_THAT(QTBILinkToPsn_var(c)->GetPathToRootPartInstanceInfo(nullptr, nullptr, nullptr),
                FailsAssertion("pPathToRootPartInstanceInfoList != NULL"));
    const QTBIRepNode_var spBelowRelation = Create(CreateRoot("AB"), "B");
    EXPECT_THAT(Diagnosis(spBelowRelation), ElementsAre(Call("spIRepNodeOnParentRelNode->GetParent")));
    {
        const QTBFault fault("GetClassAttr", FindNode("A"));
        EXPECT_THAT(Diagnosis(a), ElementsAre(Call("QTBRepTreeUtil::RepresentsPdmPartNode")));
    }
    {
        const QTBFault fault("GetDirectChildren", bc);
        EXPECT_THAT(Diagnosis(bc), ElementsAre(Call("spIRepNode->GetDirectChildren")));
    }
    {
        const QTBFault fault("GetPdmNode", ab, 1);
        EXPECT_THAT(Diagnosis(b), ElementsAre(Call("spIRepNodeOnParentRelNode->GetPdmNode")));
    }
    {
        const QTBFault fault("GetPdmNode", a, 1);
        EXPECT_THAT(Diagnosis(b), ElementsAre(Call("spIRepNodeOnParentPartObjNode->GetPdmNode")));
    }
    {
        const QTBFault fault("GetAttributeDataType", FindNode("AB"), 1);
        EXPECT_THAT(Diagnosis(b), ElementsAre(Call("QTBInfoUtil::GetCatiaInstanceNameListFromPdm")));
    }
    const QTBFault fault("GetAttributeDataType", FindNode("A"), 1);
    EXPECT_THAT(Diagnosis(b), ElementsAre(Call("QTBInfoUtil::GetCatiaPartNumberFromPdm")));
}

} // namespace
