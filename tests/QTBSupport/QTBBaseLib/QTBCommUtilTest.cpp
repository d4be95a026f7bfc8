#include "QTBCommUtil.h"

#include <gmock/gmock.h>

#include "CATError.h"
#include "QTBFakeCommunication.h"
#include "QTBGlobVarsUtil.h"
#include "QTBMatchers.h"
#include "QTBTestSession.h"

namespace {

using CommUtil = QTBTestSession;

TEST_F(CommUtil, WithoutConnectionThereIsAMessageForTheUser)
{
    QTBICommunicationServices_var spComm;
    const HRESULT hr = QTBCommUtil::GetCommComponent(&spComm);
    ASSERT_TRUE(FAILED(hr));
    const CATError* pError = CATError::CATGetLastError(hr, nullptr);
    ASSERT_NE(pError, nullptr);
    EXPECT_TRUE(pError->GetNLSMessage() == "There is no connection to the PDM system.");
    EXPECT_TRUE(spComm == NULL_var);
    EXPECT_EQ(QTBCommUtil::GetCommComponent(nullptr), E_POINTER);
}

TEST_F(CommUtil, TheConnectedComponentIsGiven)
{
    const QTBFakeCommunication communication;
    QTBICommunicationServices_var spComm;
    EXPECT_THAT(QTBCommUtil::GetCommComponent(&spComm), Succeeds());
    EXPECT_TRUE(spComm != NULL_var);
}

TEST_F(CommUtil, TheConnectionEndsWithTheSession)
{
    const QTBFakeCommunication communication;
    QTBGlobVarsUtil::EndSession();
    QTBICommunicationServices_var spComm;
    EXPECT_TRUE(FAILED(QTBCommUtil::GetCommComponent(&spComm)));
}

} // namespace
