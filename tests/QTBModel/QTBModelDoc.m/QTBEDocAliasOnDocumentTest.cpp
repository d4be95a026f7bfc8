#include <gtest/gtest.h>

#include "CATDocument.h"
#include "CATDocumentServices.h"
#include "CATIDocAlias.h"
#include "CATLateType.h"
#include "QTBMatchers.h"
#include "QTBTestSession.h"

namespace {

using DocAliasOnDocument = QTBTestSession;

TEST_F(DocAliasOnDocument, IsTheTypeUnderWhichDocumentsAreFiled)
{
    const auto document = CATBaseUnknown_var::Adopt(new CATDocument(*CATLateType::Find("QTBDocument")));
    const CATIDocAlias_var spAlias(document);
    ASSERT_TRUE(spAlias != NULL_var);
    EXPECT_EQ(spAlias->GetAlias(), "QTBDoc");
}

TEST_F(DocAliasOnDocument, LetsTheFrameMakeDocumentsOfThatType)
{
    CATBaseUnknown_var spDocument;
    EXPECT_THAT(CATDocumentServices::New("QTBDocument", &spDocument), Succeeds());
    EXPECT_STREQ(spDocument->IsA(), "QTBDoc");
    EXPECT_TRUE(CATIDocAlias_var(spDocument) == NULL_var);
}

} // namespace
