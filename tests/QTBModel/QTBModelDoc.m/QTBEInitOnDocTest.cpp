#include <gmock/gmock.h>

#include "CATDocument.h"
#include "CATDocumentServices.h"
#include "CATError.h"
#include "CATIContainer.h"
#include "CATICreateInstance.h"
#include "CATInit.h"
#include "QTBRepTreeSession.h"
#include "SpecBindNativeFormat.h"

using QTBDiagnosis::Call;
using QTBDiagnosis::DiagnosesIn;
using QTBDiagnosis::Handle;
using ::testing::Contains;
using ::testing::ElementsAre;

namespace {

// The session without the container of its own.
class InitOnDoc : public QTBFaultyRepTreeSession
{
protected:
    void SetUp() override
    {
        QTBFaultyRepTreeSession::SetUp();
        EXPECT_THAT(m_spCont->Cleanup(), Succeeds());
        m_spCont = NULL_var;
    }

    static CATBaseUnknown_var NewDocument()
    {
        CATBaseUnknown_var spDocument;
        EXPECT_THAT(CATDocumentServices::New("QTBDocument", &spDocument), Succeeds());
        return spDocument;
    }
    // A document that was not initialised.
    static CATBaseUnknown_var BareDocument()
    {
        return CATBaseUnknown_var::Adopt(new CATDocument(*CATLateType::Find("QTBDoc")));
    }
    static QTBIRepNodeCont_var ContOf(const CATBaseUnknown_var& spDocument)
    {
        return QTBIRepNodeCont_var::Adopt(
            static_cast<QTBIRepNodeCont*>(CATInit_var(spDocument)->GetRootContainer("QTBIRepNodeCont")));
    }
    // Initialises a document; what it writes to the debug output goes by the diagnoses, "FAILED" and the message.
    static std::vector<std::string> LinesOfInit(const CATBaseUnknown_var& spDocument)
    {
        const DebugCapture capture;
        CATInit_var(spDocument)->Init(FALSE);
        return capture.Lines();
    }
    static std::vector<std::string> DiagnosisOfInit(const CATBaseUnknown_var& spDocument)
    {
        const DebugCapture capture;
        CATInit_var(spDocument)->Init(FALSE);
        EXPECT_THAT(capture.Lines(), Contains("QTBEInitOnDoc::Init FAILED"));
        return DiagnosesIn(capture);
    }
};

TEST_F(InitOnDoc, GivesTheDocumentItsContainerWithTheDefaultRoot)
{
    const CATBaseUnknown_var spDocument = NewDocument();
    const QTBIRepNodeCont_var spCont = ContOf(spDocument);
    ASSERT_TRUE(spCont != NULL_var);
    EXPECT_THAT(TreesOf(spCont), ElementsAre("DEFAULT_ROOT_NODE"));
    EXPECT_TRUE(ContOf(spDocument) == spCont) << "the same every time";
    EXPECT_THAT(AllKeys(), ElementsAre("DEFAULT_ROOT_NODE"));
    EXPECT_TRUE(SpecNativeFormatIsBound("QTBRepNode"));
}

TEST_F(InitOnDoc, GivesInterfacesOfTheContainerByName)
{
    const CATBaseUnknown_var spDocument = NewDocument();
    const auto container = CATIContainer_var::Adopt(
        static_cast<CATIContainer*>(CATInit_var(spDocument)->GetRootContainer("CATIContainer")));
    EXPECT_TRUE(container == ContOf(spDocument));
    EXPECT_EQ(CATInit_var(spDocument)->GetRootContainer("QTBIRepNode"), nullptr);
}

TEST_F(InitOnDoc, GivesNoContainerBeforeTheInitialisation)
{
    EXPECT_EQ(CATInit_var(BareDocument())->GetRootContainer("QTBIRepNodeCont"), nullptr);
}

TEST_F(InitOnDoc, DoesNotLookAtItsArgument)
{
    for (const unsigned char bDestroy : {FALSE, TRUE}) {
        const CATBaseUnknown_var spDocument = BareDocument();
        CATInit_var(spDocument)->Init(static_cast<unsigned char>(bDestroy));
        EXPECT_TRUE(ContOf(spDocument) != NULL_var);
    }
}

TEST_F(InitOnDoc, OfTwoDocumentsMakesADefaultRootEachInTheSameGraph)
{
    const CATBaseUnknown_var spFirst = NewDocument();
    const CATBaseUnknown_var spSecond = NewDocument();
    EXPECT_THAT(AllKeys(), ElementsAre("DEFAULT_ROOT_NODE", "DEFAULT_ROOT_NODE"));
    EXPECT_THAT(TreesOf(ContOf(spFirst)), ElementsAre("DEFAULT_ROOT_NODE"));
    EXPECT_FALSE(ContOf(spFirst) == ContOf(spSecond));
}

TEST_F(InitOnDoc, LetsTheContainerGoWithTheDocument)
{
    CATBaseUnknown_var spDocument = BareDocument();
    CATInit_var(spDocument)->Init(FALSE);
    QTBIRepNodeCont_var spCont = ContOf(spDocument);
    EXPECT_THAT(spCont->Cleanup(), Succeeds());
    int id = 0;
    EXPECT_THAT(spCont->GetId(&id), Succeeds());
    spCont = NULL_var;
    const DebugCapture capture;
    spDocument = NULL_var;
    EXPECT_THAT(capture.Lines(), Contains("deleted rep node container [" + std::to_string(id) + "]"));
}

TEST_F(InitOnDoc, OfADocumentInitialisedTwiceKeepsTheLaterContainer)
{
    const CATBaseUnknown_var spDocument = BareDocument();
    CATInit_var(spDocument)->Init(FALSE);
    const QTBIRepNodeCont_var spFormer = ContOf(spDocument);
    CATInit_var(spDocument)->Init(TRUE);
    EXPECT_FALSE(ContOf(spDocument) == spFormer);
}

TEST_F(InitOnDoc, WritesAFailureToTheDebugOutputAndGoesOn)
{
    const CATBaseUnknown_var spDocument = BareDocument();
    const QTBFault fault("CreateDefaultRootNode", GetPdmNodeCont());
    const std::vector<std::string> lines = LinesOfInit(spDocument);
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[0].find("spIPdmNodeCont->CreateDefaultRootNode : HRESULT FAILED -> ERROR ( "), 0U);
    EXPECT_EQ(lines[1], "QTBEInitOnDoc::Init FAILED");
    EXPECT_NE(lines[2].find("spIPdmNodeCont->CreateDefaultRootNode"), std::string::npos) << lines[2];
    EXPECT_TRUE(ContOf(spDocument) == NULL_var);
    const DebugCapture capture;
    QTBDebugUtil::s_bGlobalDebugStatus = FALSE;
    CATInit_var(spDocument)->Init(FALSE);
    EXPECT_EQ(capture.Text(), "");
}

TEST_F(InitOnDoc, FailsWithoutASession)
{
    const CATBaseUnknown_var spDocument = BareDocument();
    QTBGlobVarsUtil::EndSession();
    const QTBReplacedExtension withoutFactory("QTBPdmNodeCont", CATICreateInstance::MetaObject(), nullptr);
    EXPECT_THAT(DiagnosisOfInit(spDocument), ElementsAre(Call("QTBGlobVarsUtil::GetGlobalPdmNodeContainer")));
    EXPECT_TRUE(ContOf(spDocument) == NULL_var);
}

TEST_F(InitOnDoc, FailsWithoutAContainer)
{
    const CATBaseUnknown_var spDocument = BareDocument();
    {
        const QTBReplacedExtension withoutFactory("QTBRepNodeCont", CATICreateInstance::MetaObject(), nullptr);
        EXPECT_THAT(DiagnosisOfInit(spDocument), ElementsAre(Call("::CATInstantiateComponent")));
        EXPECT_EQ(CATInit_var(spDocument)->GetRootContainer("CATIContainer"), nullptr);
    }
    const QTBReplacedExtension withoutInterface("QTBRepNodeCont", QTBIRepNodeCont::MetaObject(), nullptr);
    EXPECT_THAT(DiagnosisOfInit(spDocument), ElementsAre(Handle("spIRepNodeCont")));
    CATBaseUnknown* pContainer = CATInit_var(spDocument)->GetRootContainer("CATIContainer");
    ASSERT_NE(pContainer, nullptr) << "made before the failure, and so kept";
    pContainer->Release();
}

TEST_F(InitOnDoc, KeepsAContainerWithoutDefaultRoot)
{
    const CATBaseUnknown_var spDocument = BareDocument();
    {
        const QTBFault fault("GetPdmRootNodes");
        EXPECT_THAT(DiagnosisOfInit(spDocument), ElementsAre(Call("m_spIPdmNodeCont->GetPdmRootNodes"),
                                                             Call("spIRepNodeCont->CreateDefaultRootNode")));
    }
    ASSERT_TRUE(ContOf(spDocument) != NULL_var);
    EXPECT_EQ(AllRepNodesOf(ContOf(spDocument)).Size(), 0);
}

} // namespace
