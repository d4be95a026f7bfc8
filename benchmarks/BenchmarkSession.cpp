#include "BenchmarkSession.h"

#include <cstdlib>
#include <iostream>

#include "CATError.h"
#include "CATMsgCatalog.h"
#include "QTBGlobVarsUtil.h"
#include "QTBSchemaUtil.h"

namespace {

void Require(HRESULT hr, const char* what)
{
    if (FAILED(hr)) {
        const CATError* pError = CATError::CATGetLastError(hr, nullptr);
        std::cerr << what << " failed: " << (pError != nullptr ? pError->GetNLSMessage() : "no error") << '\n';
        std::exit(1);
    }
}

} // namespace

BenchmarkSession::BenchmarkSession()
{
    CATMsgCatalog::SetSearchPath({QTB_SOURCE_DIR "/resources/msgcatalog"});
    Require(QTBSchemaUtil::LoadSchema(QTB_SOURCE_DIR "/resources/schema/QTBSchema.xml"), "LoadSchema");
    Require(QTBGlobVarsUtil::GetGlobalPdmNodeContainer(&m_spIPdmNodeCont), "GetGlobalPdmNodeContainer");
}

BenchmarkSession::~BenchmarkSession()
{
    m_spIPdmNodeCont = NULL_var;
    QTBGlobVarsUtil::EndSession();
}

CATBaseUnknown_var BenchmarkSession::CreateObject(const char* key) const
{
    CATBaseUnknown_var spNode;
    Require(m_spIPdmNodeCont->CreatePdmObjNode(key, &spNode, TRUE), "CreatePdmObjNode");
    return spNode;
}

void BenchmarkSession::Update(const std::string& xml) const
{
    Require(m_spIPdmNodeCont->UpdatePdmGraph(CATUnicodeString::FromValidUtf8(xml), nullptr, nullptr), "UpdatePdmGraph");
}
