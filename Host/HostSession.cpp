#include "HostSession.h"

#include <filesystem>

#include "CATError.h"
#include "CATIDOMDocument.h"
#include "CATMsgCatalog.h"
#include "HostResources.h"
#include "QTBDocUtil.h"
#include "QTBGlobVarsUtil.h"
#include "QTBIQtbFrmWindow.h"
#include "QTBRepTreeUtil.h"
#include "QTBSchemaUtil.h"
#include "QTBXmlUtil.h"

namespace fs = std::filesystem;

namespace {

void RequireFile(const std::string& path, const std::string& role)
{
    if (!fs::exists(path)) {
        throw HostError(ExitCode::BadInput, role + " " + path + " does not exist");
    }
    if (fs::is_directory(path)) {
        throw HostError(ExitCode::BadInput, role + " " + path + " is a folder, not a file");
    }
}

void SetLanguage(const fs::path& catalogs, const std::string& language)
{
    if (!language.empty() && !fs::is_directory(catalogs / language)) {
        std::string known = "English";
        for (const fs::directory_entry& entry : fs::directory_iterator(catalogs)) {
            if (entry.is_directory()) {
                known += ", " + entry.path().filename().string();
            }
        }
        if (language != "English") {
            throw HostError(ExitCode::Usage, "there are no messages in " + language + "; languages are " + known);
        }
    }
    CATMsgCatalog::SetLanguage(language == "English" ? "" : language.c_str());
}

} // namespace

HostSession::HostSession(const std::string& schema, const std::string& language)
{
    const fs::path resources = HostResources::GetFolder();
    const fs::path catalogs = resources / "msgcatalog";
    CATMsgCatalog::SetSearchPath({catalogs.c_str()});
    SetLanguage(catalogs, language);

    const std::string schemaFile = schema.empty() ? (resources / "schema/QTBSchema.xml").string() : schema;
    RequireFile(schemaFile, "schema");
    Require(QTBSchemaUtil::LoadSchema(schemaFile.c_str()), ExitCode::BadInput, "schema");

    Require(QTBGlobVarsUtil::GetGlobalPdmNodeContainer(&m_spIPdmNodeCont), ExitCode::Failure, "PDM session");
    QTBIQtbFrmWindow_var spIQtbFrmWindow;
    Require(QTBDocUtil::CreateNewQtbDocument(&spIQtbFrmWindow, nullptr), ExitCode::Failure, "PDM window");
    CATFrmWindow* pFrmWindow = nullptr;
    Require(spIQtbFrmWindow->GetFrmWindowPtr(&pFrmWindow), ExitCode::Failure, "PDM window");
    Require(QTBRepTreeUtil::GetRepNodeContOfWindow(pFrmWindow, &m_spIRepNodeCont), ExitCode::Failure, "PDM window");
}

HostSession::~HostSession()
{
    m_spIRepNodeCont = NULL_var;
    m_spIPdmNodeCont = NULL_var;
    QTBGlobVarsUtil::EndSession();
}

void HostSession::ReadAnswer(const std::string& path)
{
    RequireFile(path, "answer");
    CATIDOMDocument_var spIDOMDocument;
    Require(QTBXmlUtil::GetDomDocumentFromFile(path.c_str(), &spIDOMDocument), ExitCode::BadInput, "answer");
    Require(m_spIPdmNodeCont->UpdatePdmGraph(spIDOMDocument, nullptr, nullptr), ExitCode::BadInput, "answer " + path);
    unsigned char bAddNewNodes = TRUE;
    Require(m_spIPdmNodeCont->UpdateAllRepNodeContainers(&bAddNewNodes), ExitCode::Failure, "update after " + path);
}

std::string HostSession::Describe(HRESULT hr)
{
    const CATError* pError = CATError::CATGetLastError(hr, nullptr);
    return pError != nullptr ? std::string(pError->GetNLSMessage().View()) : "not possible";
}

void HostSession::Require(HRESULT hr, ExitCode exitCode, const std::string& what)
{
    if (FAILED(hr)) {
        throw HostError(exitCode, what + ": " + Describe(hr));
    }
}
