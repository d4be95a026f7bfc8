#include "QTBInfoUtil.h"

#include <climits>
#include <ostream>
#include <string>

#include <gmock/gmock.h>

#include "QTBEditedSchema.h"
#include "QTBGlobVarsUtil.h"
#include "QTBINodeAttributes.h"
#include "QTBLoadManager.h"
#include "QTBMatchers.h"
#include "QTBTestSession.h"
#include "QTBXmlElement.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

// What PDM system and session say about single nodes.
class InfoUtil : public QTBTestSession
{
protected:
    // A part with info attributes, or without the list of them.
    static QTBIPdmNode_var PartWith(std::initializer_list<InfoEntry> entries, const std::string& further = "")
    {
        Update(Part("P", Info(entries) + further));
        return PdmNode("P");
    }
    static QTBIPdmNode_var BarePart()
    {
        CATBaseUnknown_var spNode;
        EXPECT_THAT(GetPdmNodeCont()->CreatePdmObjNode("bare", &spNode, FALSE), Succeeds());
        return spNode;
    }
    // A part-to-part relation.
    static QTBIPdmNode_var RelationWith(const std::string& further)
    {
        Update(Part("A") + Part("B") + PartPart("AB", "A", "B", further));
        return PdmNode("AB");
    }
    // Instance names of a relation as a list.
    static std::string Names(std::initializer_list<const char*> names)
    {
        std::string xml = R"(<a name="InstanceName" type="list">)";
        for (const char* name : names) {
            xml += std::string("<v>") + name + "</v>";
        }
        return xml + "</a>";
    }

    static int ActionIndexOf(const QTBIPdmNode_var& spIPdmNode)
    {
        int iActionIndex = INT_MIN;
        EXPECT_THAT(QTBInfoUtil::GetActionIndex(spIPdmNode, &iActionIndex), Succeeds());
        return iActionIndex;
    }
    static HRESULT SetActionIndex(const QTBIPdmNode_var& spIPdmNode, int iActionIndex)
    {
        QTBIPdmNode_var spNode(spIPdmNode);
        return QTBInfoUtil::SetActionIndex(iActionIndex, &spNode);
    }

    // The answer of an operation that gives a flag.
    using FlagOperation = HRESULT (*)(const QTBIPdmNode_var&, unsigned char*);
    static unsigned char Ask(FlagOperation operation, const QTBIPdmNode_var& spIPdmNode)
    {
        unsigned char flag = 2;
        EXPECT_THAT(operation(spIPdmNode, &flag), Succeeds());
        return flag;
    }
    static HRESULT CheckOutAllowed(const QTBIPdmNode_var& spIPdmNode, unsigned char* pbIsAllowed)
    {
        return QTBInfoUtil::PdmObjectIsCheckOutAllowed(spIPdmNode, pbIsAllowed);
    }

    struct Version
    {
        unsigned char bIsNewest = 2;
        unsigned char bHasSubVersion = 2;
        CATUnicodeString version = "before";
        CATUnicodeString newest = "before";
        CATUnicodeString subVersion = "before";
    };
    static HRESULT AskForVersion(const QTBIPdmNode_var& spIPdmNode, Version* pVersion)
    {
        return QTBInfoUtil::GetPdmVersionInfo(spIPdmNode, &pVersion->bIsNewest, &pVersion->bHasSubVersion,
                                              &pVersion->version, &pVersion->newest, &pVersion->subVersion);
    }
    static Version VersionWith(std::initializer_list<InfoEntry> entries)
    {
        Version version;
        EXPECT_THAT(AskForVersion(PartWith(entries), &version), Succeeds());
        return version;
    }

    static std::string PartNumberOf(const QTBIPdmNode_var& spIPdmNode, unsigned char bEmptyIsUndefined = TRUE)
    {
        CATUnicodeString usPartNumber("before");
        EXPECT_THAT(QTBInfoUtil::GetCatiaPartNumberFromPdm(spIPdmNode, &usPartNumber, FALSE, bEmptyIsUndefined),
                    Succeeds());
        return usPartNumber.ConvertToChar();
    }

    static std::vector<std::string> InstanceNamesOf(const QTBIPdmNode_var& spIPdmNode)
    {
        CATListValCATUnicodeString names;
        names.Append("before");
        EXPECT_THAT(QTBInfoUtil::GetCatiaInstanceNameListFromPdm(spIPdmNode, &names), Succeeds());
        return TextsOf(names);
    }
    static unsigned char IsUsed(const QTBIPdmNode_var& spIPdmNode, const char* name)
    {
        unsigned char bIsUsed = 2;
        EXPECT_THAT(QTBInfoUtil::CatiaInstanceNameIsUsedInRelation(spIPdmNode, name, &bIsUsed), Succeeds());
        return bIsUsed;
    }
    static HRESULT AskIfMulti(const QTBIPdmNode_var& spIPdmNode, unsigned char* pbIsMulti)
    {
        return QTBInfoUtil::IsMultiQuantityRelation(spIPdmNode, pbIsMulti, nullptr, nullptr, nullptr);
    }

    // All operations that give a flag for a node that has attributes, whatever these are.
    inline static const FlagOperation FLAG_OPERATIONS[] = {&QTBInfoUtil::PdmObjectIsEditAllowed,
                                                           &CheckOutAllowed,
                                                           &QTBInfoUtil::PdmObjectIsCheckInAllowed,
                                                           &QTBInfoUtil::PdmObjectIsUpdateSubCmpRelsAllowed,
                                                           &QTBInfoUtil::PdmDocumentHasFile,
                                                           &QTBInfoUtil::CatiaPartNumberFromPdmIsDefined,
                                                           &QTBInfoUtil::CatiaInstanceNameFromPdmIsDefined,
                                                           &QTBInfoUtil::RelationHasEmptyInstanceName,
                                                           &AskIfMulti};
};

// A right of the user and the entry in which the PDM system grants it.
struct Right
{
    const char* entry;
    HRESULT (*isAllowed)(const QTBIPdmNode_var&, unsigned char*);

    friend std::ostream& operator<<(std::ostream& stream, const Right& right) { return stream << right.entry; }
};

class InfoUtilRight : public InfoUtil, public ::testing::WithParamInterface<Right>
{
};

INSTANTIATE_TEST_SUITE_P(
    Rights, InfoUtilRight,
    ::testing::Values(Right{"QtbIsEditAllowed", &QTBInfoUtil::PdmObjectIsEditAllowed},
                      Right{"QtbIsCheckOutAllowed",
                            [](const QTBIPdmNode_var& spIPdmNode, unsigned char* pbIsAllowed) {
                                CATUnicodeString usUser;
                                return QTBInfoUtil::PdmObjectIsCheckOutAllowed(spIPdmNode, pbIsAllowed, &usUser);
                            }},
                      Right{"QtbIsCheckInAllowed", &QTBInfoUtil::PdmObjectIsCheckInAllowed},
                      Right{"QtbIsUpdateSubCmpRelsAllowed", &QTBInfoUtil::PdmObjectIsUpdateSubCmpRelsAllowed}),
    [](const auto& right) { return right.param.entry; });

} // namespace

TEST_F(InfoUtil, TheActionIndexIsThatOfTheUpdateThatReadTheNode)
{
    Update(Part("A") + Part("B") + PartPart("AB", "A", "B"));
    Update(Part("A"));
    int iCurrent = 0;
    EXPECT_THAT(QTBGlobVarsUtil::GetCurrentActionIndex(&iCurrent), Succeeds());
    EXPECT_EQ(ActionIndexOf(PdmNode("A")), iCurrent);
    EXPECT_EQ(ActionIndexOf(PdmNode("B")), iCurrent - 1);
    EXPECT_EQ(ActionIndexOf(PdmNode("AB")), iCurrent - 1);
}

TEST_F(InfoUtil, TheActionIndexIsAnInfoAttribute)
{
    const QTBIPdmNode_var spPart = PartWith({{"QtbVersion", "A"}});
    EXPECT_THAT(SetActionIndex(spPart, 4711), Succeeds());
    EXPECT_EQ(InfoOf(spPart, "QtbActionIndex"), "4711");
    EXPECT_EQ(InfoOf(spPart, "QtbVersion"), "A");
    EXPECT_THAT(spPart->SetQtbInfoAttr("QtbActionIndex", "12"), Succeeds());
    EXPECT_EQ(ActionIndexOf(spPart), 12);
}

TEST_F(InfoUtil, TheActionIndexIsReadBackAsItWasSet)
{
    const QTBIPdmNode_var spPart = PartWith({});
    for (const int iActionIndex : {0, 1, 2, 1, -1, INT_MAX, INT_MIN, 0}) {
        EXPECT_THAT(SetActionIndex(spPart, iActionIndex), Succeeds());
        EXPECT_EQ(ActionIndexOf(spPart), iActionIndex);
    }
}

TEST_F(InfoUtil, ANodeThatNoActionReadHasTheActionIndexZero)
{
    EXPECT_EQ(ActionIndexOf(BarePart()), 0);
    const QTBIPdmNode_var spPart = PartWith({});
    for (const char* text : {"", "x", "12x", " 12", "99999999999999999999"}) {
        EXPECT_THAT(spPart->SetQtbInfoAttr("QtbActionIndex", text), Succeeds());
        EXPECT_EQ(ActionIndexOf(spPart), 0) << text;
    }
}

TEST_F(InfoUtil, ARecordWithoutInfoAttributesGetsThemWithItsActionIndex)
{
    const QTBIPdmNode_var spPart = BarePart();
    const CATIDOMElement_var spRecord = ReadXmlElement("<o><a name=\"Class\">Part</a></o>");
    const QTBINodeAttributes_var spINodeAttributes(spPart);
    EXPECT_THAT(spINodeAttributes->SetXmlElement(spRecord), Succeeds());
    EXPECT_THAT(SetActionIndex(spPart, 7), Succeeds());
    EXPECT_EQ(ActionIndexOf(spPart), 7);
    CATListValCATUnicodeString names;
    EXPECT_THAT(spINodeAttributes->GetAllAttributeNames(&names), Succeeds());
    EXPECT_THAT(TextsOf(names), ElementsAre("Class", "QtbInfo"));
    EXPECT_THAT(SetActionIndex(spPart, 8), Succeeds());
    EXPECT_EQ(ActionIndexOf(spPart), 8);
    EXPECT_THAT(spINodeAttributes->GetAllAttributeNames(&names), Succeeds());
    EXPECT_EQ(names.Size(), 2) << "added once";
    CATListValCATBaseUnknown_var attributes;
    EXPECT_THAT(QTBXmlUtil::GetElements(spRecord, "a", "name", "QtbInfo", &attributes), Succeeds());
    EXPECT_EQ(attributes.Size(), 1) << "in the record too";
}

TEST_F(InfoUtil, ANodeThatCannotHoldAnActionIndexIsNotStamped)
{
    EXPECT_TRUE(FAILED(SetActionIndex(BarePart(), 7))) << "no record";
    const QTBIPdmNode_var spPart = BarePart();
    EXPECT_THAT(QTBINodeAttributes_var(spPart)->SetXmlElement(ReadXmlElement("<o><a name=\"QtbInfo\">text</a></o>")),
                Succeeds());
    EXPECT_TRUE(FAILED(SetActionIndex(spPart, 7))) << "the name is taken";
    EXPECT_EQ(ActionIndexOf(spPart), 0);
    EXPECT_EQ(AttributeOf(spPart, "QtbInfo"), "text");
    EXPECT_TRUE(FAILED(SetActionIndex(NULL_var, 7)));
    EXPECT_TRUE(FAILED(QTBInfoUtil::SetActionIndex(7, nullptr)));
}

TEST_F(InfoUtil, AStampedNodeIsKnownToTheLoadManager)
{
    const QTBIPdmNode_var spPart = PartWith({}, Attribute("PartNumber", "P-1"));
    QTBIPdmNode_var spFound;
    EXPECT_THAT(g_QTBLoadManager.GetPdmPartForPartNumber("P-1", &spFound), Succeeds());
    EXPECT_TRUE(FAILED(g_QTBLoadManager.GetPdmPartForPartNumber("P-2", &spFound)));
    EXPECT_THAT(QTBINodeAttributes_var(spPart)->SetStringAttributeValue("PartNumber", "P-2"), Succeeds());
    EXPECT_THAT(SetActionIndex(spPart, 7), Succeeds());
    EXPECT_THAT(g_QTBLoadManager.GetPdmPartForPartNumber("P-2", &spFound), Succeeds());
    EXPECT_TRUE(spFound == spPart);
}

TEST_F(InfoUtil, TheRelevantBaseClassIsAnInfoAttributeThatIsNotEmpty)
{
    CATUnicodeString usClass("before");
    EXPECT_THAT(QTBInfoUtil::GetRelevantBaseClassFromPdm(PartWith({}), &usClass), FailsQuietly());
    EXPECT_THAT(QTBInfoUtil::GetRelevantBaseClassFromPdm(PartWith({{"QtbRelevantBaseClass", ""}}), &usClass),
                FailsQuietly());
    EXPECT_THAT(QTBInfoUtil::GetRelevantBaseClassFromPdm(BarePart(), &usClass), FailsQuietly());
    EXPECT_EQ(usClass, "before");
    EXPECT_THAT(QTBInfoUtil::GetRelevantBaseClassFromPdm(PartWith({{"QtbRelevantBaseClass", "Document"}}), &usClass),
                Succeeds());
    EXPECT_EQ(usClass, "Document");
    EXPECT_THAT(QTBInfoUtil::GetRelevantBaseClassFromPdm(PdmNode("P"), nullptr), FailsQuietly());
    EXPECT_THAT(QTBInfoUtil::GetRelevantBaseClassFromPdm(NULL_var, &usClass), FailsQuietly());
}

TEST_F(InfoUtil, TheVersionIsAnInfoAttributeThatIsNotEmpty)
{
    CATUnicodeString usVersion("before");
    EXPECT_THAT(QTBInfoUtil::GetQtbVersion(PartWith({{"QtbVersion", ""}}), &usVersion), FailsQuietly());
    EXPECT_THAT(QTBInfoUtil::GetQtbVersion(BarePart(), &usVersion), FailsQuietly());
    EXPECT_EQ(usVersion, "before");
    EXPECT_THAT(QTBInfoUtil::GetQtbVersion(PartWith({{"QtbVersion", "B"}}), &usVersion), Succeeds());
    EXPECT_EQ(usVersion, "B");
    EXPECT_THAT(QTBInfoUtil::GetQtbVersion(PdmNode("P"), nullptr), FailsQuietly());
    EXPECT_THAT(QTBInfoUtil::GetQtbVersion(NULL_var, &usVersion), FailsQuietly());
}

TEST_F(InfoUtil, TheVersionStateIsGivenAsThePdmSystemStatesIt)
{
    const Version version = VersionWith(
        {{"QtbVersion", "A"}, {"QtbSubVersion", "2"}, {"QtbIsNewestVersion", "false"}, {"QtbNewestVersion", "C"}});
    EXPECT_EQ(version.bIsNewest, FALSE);
    EXPECT_EQ(version.bHasSubVersion, TRUE);
    EXPECT_EQ(version.version, "A");
    EXPECT_EQ(version.newest, "C");
    EXPECT_EQ(version.subVersion, "2");
}

TEST_F(InfoUtil, TheNewestVersionIsToldByTheFlagOrByComparison)
{
    EXPECT_EQ(VersionWith({{"QtbVersion", "A"}, {"QtbNewestVersion", "C"}}).bIsNewest, FALSE);
    EXPECT_EQ(VersionWith({{"QtbVersion", "C"}, {"QtbNewestVersion", "C"}}).bIsNewest, TRUE);
    EXPECT_EQ(VersionWith({{"QtbVersion", "A"}}).bIsNewest, TRUE);
    EXPECT_EQ(VersionWith({{"QtbNewestVersion", "C"}}).bIsNewest, FALSE);
    EXPECT_EQ(VersionWith({{"QtbVersion", "A"}, {"QtbNewestVersion", "C"}, {"QtbIsNewestVersion", "True"}}).bIsNewest,
              TRUE);
    EXPECT_EQ(VersionWith({{"QtbVersion", "C"}, {"QtbNewestVersion", "C"}, {"QtbIsNewestVersion", "FALSE"}}).bIsNewest,
              FALSE);
}

TEST_F(InfoUtil, TheNewestVersionIsTheOwnOneWhenThatIsTheNewest)
{
    EXPECT_EQ(VersionWith({{"QtbVersion", "A"}}).newest, "A");
    EXPECT_EQ(VersionWith({{"QtbVersion", "A"}, {"QtbIsNewestVersion", "true"}}).newest, "A");
    const Version older = VersionWith({{"QtbVersion", "A"}, {"QtbIsNewestVersion", "false"}});
    EXPECT_EQ(older.newest, "");
    EXPECT_EQ(older.bHasSubVersion, FALSE);
    EXPECT_EQ(older.subVersion, "");
}

TEST_F(InfoUtil, ANodeWithoutVersionInformationHasNoVersionState)
{
    Version version;
    EXPECT_THAT(AskForVersion(PartWith({{"QtbSubVersion", "2"}, {"QtbVersion", ""}}), &version), FailsQuietly());
    EXPECT_THAT(AskForVersion(BarePart(), &version), FailsQuietly());
    EXPECT_THAT(AskForVersion(NULL_var, &version), FailsQuietly());
    EXPECT_EQ(version.bIsNewest, 2);
    EXPECT_EQ(version.version, "before");
}

TEST_F(InfoUtil, TheVersionStateIsGivenOnlyWhereItIsWanted)
{
    const QTBIPdmNode_var spPart = PartWith({{"QtbVersion", "A"}});
    EXPECT_THAT(QTBInfoUtil::GetPdmVersionInfo(spPart, nullptr, nullptr, nullptr, nullptr, nullptr), Succeeds());
    CATUnicodeString usVersion;
    EXPECT_THAT(QTBInfoUtil::GetPdmVersionInfo(spPart, nullptr, nullptr, &usVersion, nullptr, nullptr), Succeeds());
    EXPECT_EQ(usVersion, "A");
}

TEST_P(InfoUtilRight, IsGrantedInThreeSpellings)
{
    for (const char* spelling : {"true", "True", "TRUE"}) {
        EXPECT_EQ(Ask(GetParam().isAllowed, PartWith({{GetParam().entry, spelling}})), TRUE) << spelling;
    }
}

TEST_P(InfoUtilRight, IsNotThereUnlessItIsGranted)
{
    for (const char* text : {"false", "False", "FALSE", "", "tRUE", "1", "yes"}) {
        EXPECT_EQ(Ask(GetParam().isAllowed, PartWith({{GetParam().entry, text}})), FALSE) << text;
    }
    EXPECT_EQ(Ask(GetParam().isAllowed, PartWith({})), FALSE);
    EXPECT_EQ(Ask(GetParam().isAllowed, BarePart()), FALSE);
}

TEST_P(InfoUtilRight, IsIndependentOfTheOthers)
{
    for (const Right& other : {Right{"QtbIsEditAllowed", nullptr}, Right{"QtbIsCheckOutAllowed", nullptr},
                               Right{"QtbIsCheckInAllowed", nullptr}, Right{"QtbIsUpdateSubCmpRelsAllowed", nullptr}}) {
        const bool isSame = std::string(other.entry) == GetParam().entry;
        EXPECT_EQ(Ask(GetParam().isAllowed, PartWith({{other.entry, "true"}})), isSame ? TRUE : FALSE) << other.entry;
    }
}

TEST_F(InfoUtil, TheUserWhoHasAnObjectCheckedOutIsNamedOnRequest)
{
    unsigned char bIsAllowed = 2;
    CATUnicodeString usUser("before");
    const QTBIPdmNode_var spPart = PartWith({{"QtbIsCheckOutAllowed", "true"}, {"QtbCheckedOutBy", "Jo Doe"}});
    EXPECT_THAT(QTBInfoUtil::PdmObjectIsCheckOutAllowed(spPart, &bIsAllowed, &usUser), Succeeds());
    EXPECT_EQ(bIsAllowed, TRUE);
    EXPECT_EQ(usUser, "Jo Doe");
    EXPECT_THAT(QTBInfoUtil::PdmObjectIsCheckOutAllowed(spPart, &bIsAllowed), Succeeds());
    EXPECT_THAT(QTBInfoUtil::PdmObjectIsCheckOutAllowed(PartWith({}), &bIsAllowed, &usUser), Succeeds());
    EXPECT_EQ(bIsAllowed, FALSE);
    EXPECT_EQ(usUser, "") << "nobody";
}

TEST_F(InfoUtil, AnObjectHasTheFileThatThePdmSystemSaysItHas)
{
    const std::string hasFile = Info({{"QtbHasFile", "true"}});
    const std::string hasNone = Info({{"QtbHasFile", "false"}});
    Update(Object("Document", "D1", hasFile) + Object("Document", "D2", hasNone) +
           Object("CATPartFile", "F1", hasFile) + Object("CATPartFile", "F2", hasNone));
    EXPECT_EQ(Ask(&QTBInfoUtil::PdmDocumentHasFile, PdmNode("D1")), TRUE);
    EXPECT_EQ(Ask(&QTBInfoUtil::PdmDocumentHasFile, PdmNode("D2")), FALSE);
    EXPECT_EQ(Ask(&QTBInfoUtil::PdmDocumentHasFile, PdmNode("F1")), TRUE);
    EXPECT_EQ(Ask(&QTBInfoUtil::PdmDocumentHasFile, PdmNode("F2")), FALSE);
}

TEST_F(InfoUtil, WithoutAWordOfThePdmSystemObjectsOfAFileClassHaveAFile)
{
    Update(Part("A") + Object("Document", "D") + Object("CATPartFile", "F") + Object("File", "G") +
           Relation("PartFile", "AF", "A", "F"));
    EXPECT_EQ(Ask(&QTBInfoUtil::PdmDocumentHasFile, PdmNode("F")), TRUE);
    for (const char* key : {"A", "D", "G", "AF"}) {
        EXPECT_EQ(Ask(&QTBInfoUtil::PdmDocumentHasFile, PdmNode(key)), FALSE) << key;
    }
    EXPECT_EQ(Ask(&QTBInfoUtil::PdmDocumentHasFile, BarePart()), FALSE);
}

TEST_F(InfoUtil, ThePartNumberIsTheAttributeThatTheSessionNames)
{
    const QTBIPdmNode_var spPart = PartWith({}, Attribute("PartNumber", "P-1") + Attribute("Number", "N-1"));
    EXPECT_EQ(PartNumberOf(spPart), "P-1");
    CATUnicodeString usPartNumber;
    EXPECT_THAT(QTBInfoUtil::GetCatiaPartNumberFromPdm(ObjNode("P"), &usPartNumber, FALSE, TRUE), Succeeds());
    EXPECT_EQ(usPartNumber, "P-1") << "by the object's interface";
    QTBLoadEditedSchema({{"partNumberAttr=\"PartNumber\"", "partNumberAttr=\"Number\""}});
    EXPECT_EQ(PartNumberOf(spPart), "N-1");
}

TEST_F(InfoUtil, AnEmptyPartNumberCountsOnlyWhenItIsAskedFor)
{
    const QTBIPdmNode_var spPart = PartWith({}, Attribute("PartNumber", ""));
    EXPECT_EQ(PartNumberOf(spPart, FALSE), "");
    CATUnicodeString usPartNumber("before");
    EXPECT_THAT(QTBInfoUtil::GetCatiaPartNumberFromPdm(spPart, &usPartNumber, FALSE, TRUE), FailsQuietly());
    EXPECT_EQ(usPartNumber, "before");
    EXPECT_EQ(Ask(&QTBInfoUtil::CatiaPartNumberFromPdmIsDefined, spPart), FALSE);
}

TEST_F(InfoUtil, AMissingPartNumberFailsWithAMessageOnRequestOnly)
{
    CATUnicodeString usPartNumber("before");
    for (const QTBIPdmNode_var& spPart :
         {PartWith({}), PartWith({}, R"(<a name="PartNumber" type="list"><v>P-1</v></a>)")}) {
        EXPECT_THAT(QTBInfoUtil::GetCatiaPartNumberFromPdm(spPart, &usPartNumber, FALSE, FALSE), FailsQuietly());
        const HRESULT hr = QTBInfoUtil::GetCatiaPartNumberFromPdm(spPart, &usPartNumber, TRUE, FALSE);
        EXPECT_THAT(hr, FailsWithMessage("AttributeNotDefinedERR_2001"));
        EXPECT_EQ(CATError::CATGetLastError(hr, nullptr)->GetNLSMessage(),
                  "The attribute \"PartNumber\" is not defined on P.");
        EXPECT_EQ(Ask(&QTBInfoUtil::CatiaPartNumberFromPdmIsDefined, spPart), FALSE);
    }
    EXPECT_EQ(usPartNumber, "before");
    EXPECT_THAT(QTBInfoUtil::GetCatiaPartNumberFromPdm(PdmNode("P"), nullptr, TRUE, TRUE), FailsQuietly());
    EXPECT_THAT(QTBInfoUtil::GetCatiaPartNumberFromPdm(NULL_var, &usPartNumber, TRUE, TRUE), FailsQuietly());
    EXPECT_EQ(Ask(&QTBInfoUtil::CatiaPartNumberFromPdmIsDefined, PartWith({}, Attribute("PartNumber", "P-1"))), TRUE);
}

TEST_F(InfoUtil, ThePartNumberIsTheStoredValueNotADisplayName)
{
    QTBLoadEditedSchema({{"partNumberAttr=\"PartNumber\"", "partNumberAttr=\"State\""}});
    EXPECT_EQ(PartNumberOf(PartWith({}, Attribute("State", "30"))), "30");
}

TEST_F(InfoUtil, WithoutThatSettingThereAreNoPartNumbersAndNoInstanceNames)
{
    QTBLoadEditedSchema({{"partNumberAttr=\"PartNumber\"", ""}, {"instanceNameAttr=\"InstanceName\"", ""}});
    const QTBIPdmNode_var spPart = PartWith({}, Attribute("PartNumber", "P-1"));
    CATUnicodeString usPartNumber;
    EXPECT_TRUE(FAILED(QTBInfoUtil::GetCatiaPartNumberFromPdm(spPart, &usPartNumber, TRUE, TRUE)));
    EXPECT_EQ(Ask(&QTBInfoUtil::CatiaPartNumberFromPdmIsDefined, spPart), FALSE);
    const QTBIPdmNode_var spRelation = RelationWith(Names({"Screw.1"}));
    CATListValCATUnicodeString names;
    EXPECT_TRUE(FAILED(QTBInfoUtil::GetCatiaInstanceNameListFromPdm(spRelation, &names)));
    EXPECT_EQ(Ask(&QTBInfoUtil::CatiaInstanceNameFromPdmIsDefined, spRelation), FALSE);
}

TEST_F(InfoUtil, InstanceNamesAreAListOrASingleText)
{
    EXPECT_THAT(InstanceNamesOf(RelationWith(Names({"Screw.2", "Screw.1", "Screw.2"}))),
                ElementsAre("Screw.2", "Screw.1", "Screw.2"));
    EXPECT_THAT(InstanceNamesOf(RelationWith(Names({}))), IsEmpty());
    EXPECT_THAT(InstanceNamesOf(RelationWith(Attribute("InstanceName", "Screw.1"))), ElementsAre("Screw.1"));
    EXPECT_THAT(InstanceNamesOf(RelationWith(Attribute("InstanceName", ""))), ElementsAre(""));
}

TEST_F(InfoUtil, ARelationWithoutInstanceNamesHasNoListOfThem)
{
    CATListValCATUnicodeString names;
    names.Append("before");
    EXPECT_THAT(QTBInfoUtil::GetCatiaInstanceNameListFromPdm(RelationWith(""), &names), FailsQuietly());
    EXPECT_THAT(QTBInfoUtil::GetCatiaInstanceNameListFromPdm(
                    RelationWith(R"(<a name="InstanceName" type="nvlist"><nv name="a">b</nv></a>)"), &names),
                FailsQuietly());
    EXPECT_THAT(QTBInfoUtil::GetCatiaInstanceNameListFromPdm(NULL_var, &names), FailsQuietly());
    EXPECT_THAT(TextsOf(names), ElementsAre("before"));
    EXPECT_THAT(QTBInfoUtil::GetCatiaInstanceNameListFromPdm(RelationWith(Names({"Screw.1"})), nullptr),
                FailsQuietly());
}

TEST_F(InfoUtil, AnInstanceNameIsDefinedWhenOneIsNotEmpty)
{
    const auto isDefined = [](const std::string& further) {
        return Ask(&QTBInfoUtil::CatiaInstanceNameFromPdmIsDefined, RelationWith(further));
    };
    EXPECT_EQ(isDefined(Names({"", "Screw.1"})), TRUE);
    EXPECT_EQ(isDefined(Attribute("InstanceName", "Screw.1")), TRUE);
    EXPECT_EQ(isDefined(Names({"", ""})), FALSE);
    EXPECT_EQ(isDefined(Names({})), FALSE);
    EXPECT_EQ(isDefined(Attribute("InstanceName", "")), FALSE);
    EXPECT_EQ(isDefined(""), FALSE);
}

TEST_F(InfoUtil, AnInstanceNameIsUsedWhenItIsJustOneOfTheRelations)
{
    const QTBIPdmNode_var spRelation = RelationWith(Names({"Screw.1", "", "Screw.2"}));
    EXPECT_EQ(IsUsed(spRelation, "Screw.1"), TRUE);
    EXPECT_EQ(IsUsed(spRelation, "Screw.2"), TRUE);
    for (const char* name : {"screw.1", "Screw", "Screw.1 ", ""}) {
        EXPECT_EQ(IsUsed(spRelation, name), FALSE) << name;
    }
    EXPECT_EQ(IsUsed(RelationWith(""), "Screw.1"), FALSE);
    EXPECT_EQ(IsUsed(RelationWith(Attribute("InstanceName", "Screw.1")), "Screw.1"), TRUE);
    EXPECT_THAT(QTBInfoUtil::CatiaInstanceNameIsUsedInRelation(PdmNode("AB"), "Screw.1", nullptr), FailsQuietly());
    unsigned char bIsUsed = 2;
    EXPECT_THAT(QTBInfoUtil::CatiaInstanceNameIsUsedInRelation(NULL_var, "Screw.1", &bIsUsed), FailsQuietly());
    EXPECT_EQ(bIsUsed, 2);
}

TEST_F(InfoUtil, ARelationLacksAnInstanceNameWhenItHasNoneOrAnEmptyOne)
{
    const auto lacksName = [](const std::string& further) {
        return Ask(&QTBInfoUtil::RelationHasEmptyInstanceName, RelationWith(further));
    };
    EXPECT_EQ(lacksName(""), TRUE);
    EXPECT_EQ(lacksName(Names({})), TRUE);
    EXPECT_EQ(lacksName(Names({"Screw.1", ""})), TRUE);
    EXPECT_EQ(lacksName(Attribute("InstanceName", "")), TRUE);
    EXPECT_EQ(lacksName(Attribute("InstanceName", "Screw.1")), FALSE);
    EXPECT_EQ(lacksName(Names({"Screw.1", "Screw.2"})), FALSE);
}

TEST_F(InfoUtil, ARelationWithSeveralInstanceNamesStandsForSeveralInstances)
{
    EXPECT_EQ(Ask(&AskIfMulti, RelationWith(Names({"Screw.1", "Screw.2"}))), TRUE);
    EXPECT_EQ(Ask(&AskIfMulti, RelationWith(Names({"Screw.1", "Screw.1"}))), TRUE);
    EXPECT_EQ(Ask(&AskIfMulti, RelationWith(Names({"Screw.1"}))), FALSE);
    EXPECT_EQ(Ask(&AskIfMulti, RelationWith(Attribute("InstanceName", "Screw.1"))), FALSE);
    EXPECT_EQ(Ask(&AskIfMulti, RelationWith("")), FALSE);
}

TEST_F(InfoUtil, TheNamesOfSeveralInstancesAreCounted)
{
    const QTBIPdmNode_var spRelation = RelationWith(Names({"S.2", "S.1", "S.2", "", "S.2", "S.1"}));
    unsigned char bIsMulti = 2;
    CATListValCATUnicodeString names;
    CATListValCATUnicodeString differentNames;
    CATRawCollint occurrences;
    names.Append("before");
    differentNames.Append("before");
    occurrences.Append(99);
    EXPECT_THAT(QTBInfoUtil::IsMultiQuantityRelation(spRelation, &bIsMulti, &names, &differentNames, &occurrences),
                Succeeds());
    EXPECT_EQ(bIsMulti, TRUE);
    EXPECT_THAT(TextsOf(names), ElementsAre("S.2", "S.1", "S.2", "", "S.2", "S.1"));
    EXPECT_THAT(TextsOf(differentNames), ElementsAre("S.2", "S.1", ""));
    ASSERT_EQ(occurrences.Size(), 3);
    EXPECT_EQ(occurrences[1], 3);
    EXPECT_EQ(occurrences[2], 2);
    EXPECT_EQ(occurrences[3], 1);

    CATRawCollint onlyOccurrences;
    EXPECT_THAT(QTBInfoUtil::IsMultiQuantityRelation(spRelation, &bIsMulti, nullptr, nullptr, &onlyOccurrences),
                Succeeds());
    EXPECT_EQ(onlyOccurrences.Size(), 3);
    EXPECT_THAT(QTBInfoUtil::IsMultiQuantityRelation(RelationWith(""), &bIsMulti, &names, &differentNames, nullptr),
                Succeeds());
    EXPECT_EQ(names.Size(), 0);
    EXPECT_EQ(differentNames.Size(), 0);
}

TEST_F(InfoUtil, WhatHasNoAttributesIsNotAskedForThem)
{
    int iActionIndex = 99;
    EXPECT_THAT(QTBInfoUtil::GetActionIndex(NULL_var, &iActionIndex), FailsQuietly());
    EXPECT_THAT(QTBInfoUtil::GetActionIndex(PartWith({}), nullptr), FailsQuietly());
    EXPECT_EQ(iActionIndex, 99);
    for (const FlagOperation operation : FLAG_OPERATIONS) {
        unsigned char flag = 2;
        EXPECT_THAT(operation(NULL_var, &flag), FailsQuietly());
        EXPECT_EQ(flag, 2);
        EXPECT_THAT(operation(PdmNode("P"), nullptr), FailsQuietly());
    }
    CATUnicodeString usUser("before");
    unsigned char bIsAllowed = 2;
    EXPECT_THAT(QTBInfoUtil::PdmObjectIsCheckOutAllowed(NULL_var, &bIsAllowed, &usUser), FailsQuietly());
    EXPECT_EQ(usUser, "before");
}
