#include "QTBMessageUtil.h"

#include <gtest/gtest.h>

#include "CATError.h"
#include "CATMsgCatalog.h"
#include "QTBTestLateType.h"

namespace {

class MessageUtil : public ::testing::Test
{
protected:
    MessageUtil() { CATMsgCatalog::SetSearchPath({QTB_SOURCE_DIR "/resources/msgcatalog"}); }
    ~MessageUtil() override { CATMsgCatalog::SetLanguage(""); }

    // Checks a message and releases it, as whoever made it does that has no use for it.
    static void Expect(CATError* pError, const char* kind, const char* message)
    {
        ASSERT_NE(pError, nullptr);
        EXPECT_TRUE(pError->IsAKindOf(kind)) << pError->IsA();
        EXPECT_TRUE(pError->IsAKindOf("CATError"));
        EXPECT_EQ(pError->IsAKindOf("QTBInformation"), std::string(kind) == "QTBInformation");
        EXPECT_EQ(pError->IsAKindOf("QTBWarning"), std::string(kind) == "QTBWarning");
        EXPECT_EQ(pError->GetNLSMessage(), message);
        pError->Release();
    }
};

TEST_F(MessageUtil, MakesErrors)
{
    Expect(QTBMessageUtil::AttributeNotDefinedError("Part 'Rod'", "Mass"), "QTBUserError",
           "The attribute \"Mass\" is not defined on Part 'Rod'.");
    Expect(QTBMessageUtil::FunctionalityNotImplemented(), "QTBUserError", "This function is not available.");
    Expect(QTBMessageUtil::InstanceNameOccursMoreThanOnce("Part 'Rod'", "Nut.1"), "QTBUserError",
           "The instance name \"Nut.1\" occurs more than once below Part 'Rod'.");
    Expect(QTBMessageUtil::ObjectIsCheckedOutByUser("mueller"), "QTBUserError", "checked out by mueller");
    Expect(QTBMessageUtil::PsnNodeRefDocNotFoundError("Nut.1"), "QTBUserError",
           "The document of the instance \"Nut.1\" was not found.");
    Expect(QTBMessageUtil::NoPdmConnectionError(), "QTBUserError", "There is no connection to the PDM system.");
}

TEST_F(MessageUtil, MakesWarnings)
{
    Expect(QTBMessageUtil::CircleInRecursiveExpandWarning("Part 'Rod'"), "QTBWarning",
           "Part 'Rod' is used below itself. The expansion stops there.");
    Expect(QTBMessageUtil::IgnoredInvalidNodeWarning("Product 'Rod'", "Broken link"), "QTBWarning",
           "Product 'Rod' is left out because of its type: Broken link.");
    Expect(QTBMessageUtil::IgnoredInvalidNodeWarning("Product 'Rod'", ""), "QTBWarning",
           "Product 'Rod' is left out: its type cannot be told.");
    Expect(QTBMessageUtil::MaxExpansionLevelReached(7), "QTBWarning",
           "The maximum expansion level 7 was reached. Deeper levels are not shown.");
    Expect(QTBMessageUtil::MaxRepNodesReached(7), "QTBWarning",
           "The tree has more than 7 nodes. What is shown ends there; QTB_MAX_REP_NODES sets the limit.");
}

TEST_F(MessageUtil, MakesInformation)
{
    Expect(QTBMessageUtil::RepNodeDeleted("Part 'Rod'", "Rod.1"), "QTBInformation",
           "Part 'Rod' was removed from the PDM window. It corresponds to Rod.1, which is loaded.");
}

TEST_F(MessageUtil, NamesAProduct)
{
    QTBTestLateType product("TestProduct");
    Expect(QTBMessageUtil::PsnEmbeddedComponentNotSupported(product.Create()), "QTBUserError",
           "TestProduct is an embedded component, which the PDM system does not support.");
}

TEST_F(MessageUtil, SpeaksTheLanguageOfTheSession)
{
    CATMsgCatalog::SetLanguage("German");
    Expect(QTBMessageUtil::ObjectIsCheckedOutByUser("mueller"), "QTBUserError", "ausgecheckt von mueller");
}

TEST_F(MessageUtil, LeavesTheReferenceToTheCaller)
{
    CATError::ForgetResults();
    const int before = CATError::GetLiveCount();
    CATError* pError = QTBMessageUtil::FunctionalityNotImplemented();
    EXPECT_EQ(CATError::GetLiveCount(), before + 1);
    pError->Release();
    EXPECT_EQ(CATError::GetLiveCount(), before);
}

} // namespace
