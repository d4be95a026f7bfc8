#include "HostSession.h"

#include <filesystem>
#include <iostream>
#include <system_error>

#include "AnswerFile.h"
#include "AnswerText.h"
#include "CATDocument.h"
#include "CATDocumentServices.h"
#include "CATError.h"
#include "CATFrmEditor.h"
#include "CATFrmLayout.h"
#include "CATFrmNavigGraphicWindow.h"
#include "CATFrmObjectEditor.h"
#include "CATMsgCatalog.h"
#include "CATProductServices.h"
#ifdef QTB_WITH_STEP
#include "CATStepProducts.h"
#endif
#include "ConsideringNodes.h"
#include "HostRelations.h"
#include "HostResources.h"
#include "QTBCommUtil.h"
#include "QTBConstants.h"
#include "QTBDocUtil.h"
#include "QTBGlobVarsUtil.h"
#include "QTBICommunicationServices.h"
#include "QTBIQtbFrmWindow.h"
#include "QTBIRepNode.h"
#include "QTBNodeRelationInfo.h"
#include "QTBPdmStoreComponent.h"
#include "QTBRepTreeUtil.h"
#include "QTBSchemaUtil.h"
#include "StoreInput.h"

namespace fs = std::filesystem;

namespace {

bool HasWindow(const CATDocument* pDocument)
{
    for (const CATFrmWindow* pWindow : CATFrmLayout::GetCurrentLayout()->GetWindowList()) {
        if (pWindow->GetEditor() != nullptr && pWindow->GetEditor()->GetDocument() == pDocument) {
            return true;
        }
    }
    return false;
}

} // namespace

HostSession::HostSession(const std::string& schema, const std::string& language)
{
    const fs::path resources = HostResources::GetFolder();
    const fs::path catalogs = resources / "msgcatalog";
    CATMsgCatalog::SetSearchPath({catalogs.c_str()});
    SetLanguage(language);

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
    CloseAssemblies();
    m_spIRepNodeCont = NULL_var;
    m_spIPdmNodeCont = NULL_var;
    QTBGlobVarsUtil::EndSession();
    m_spStore = NULL_var;
}

void HostSession::ConnectStore(const std::string& path, const std::string& user)
{
    QTBPdmStore::Options options;
    options.user = StoreInput::GetUser(user).c_str();
    CATBaseUnknown_var spStore;
    Require(QTBPdmStoreComponent::Create(path, options, &spStore), ExitCode::BadInput, "PDM store");
    QTBCommUtil::SetCommComponent(spStore);
    m_spStore = spStore;
    m_StorePath = path;
}

QTBPdmStore* HostSession::GetStore() const
{
    return m_spStore != NULL_var ? &static_cast<QTBPdmStoreComponent*>(m_spStore.Get())->GetStore() : nullptr;
}

void HostSession::SetLanguage(const std::string& language)
{
    const fs::path catalogs = fs::path(HostResources::GetFolder()) / "msgcatalog";
    std::string known = "English";
    bool isKnown = language.empty() || language == known;
    for (const fs::directory_entry& entry : fs::directory_iterator(catalogs)) {
        if (entry.is_directory()) {
            const std::string name = entry.path().filename().string();
            isKnown = isKnown || language == name;
            known += ", " + name;
        }
    }
    if (!isKnown) {
        throw HostError(ExitCode::Usage, "there are no messages in " + language + "; languages are " + known);
    }
    CATMsgCatalog::SetLanguage(language == "English" ? "" : language.c_str());
}

CATListValCATBaseUnknown_var HostSession::OpenAssembly(const std::string& path, [[maybe_unused]] bool withBoxes)
{
    RequireFile(path, "assembly");
    CATListValCATBaseUnknown_var documents;
    if (fs::path(path).extension() == ".xml") {
        Require(CATProductServices::OpenFile(path.c_str(), &documents), ExitCode::BadInput, "assembly");
    } else {
#ifdef QTB_WITH_STEP
        Require(CATStepProducts::OpenFile(path.c_str(), &documents,
                                          withBoxes ? CATStepContent::StructureAndBoxes : CATStepContent::Structure),
                ExitCode::BadInput, "assembly");
#else
        throw HostError(ExitCode::BadInput,
                        "assembly " + path + " is no product structure file (.xml), and " + NO_STEP_READER);
#endif
    }
    // What is open already stays as it is there.
    CATListValCATBaseUnknown_var opened;
    for (const CATBaseUnknown_var& spDocument : documents) {
        CATDocument* pDocument = CATDocument::FromComponent(spDocument.Get());
        if (!HasWindow(pDocument)) {
            CATFrmNavigGraphicWindow::Create(pDocument->GetStorageName(), CATFrmObjectEditor::Create(pDocument));
            opened.Append(spDocument);
        }
    }
    if (opened.Size() == 0 && documents.Size() > 0) {
        throw HostError(ExitCode::Usage, "assembly " + path + " is open already");
    }
    m_Assemblies.Append(opened);
    return opened;
}

void HostSession::CloseAssemblies()
{
    for (const CATBaseUnknown_var& spDocument : m_Assemblies) {
        CATDocumentServices::Remove(*CATDocument::FromComponent(spDocument.Get()));
    }
    m_Assemblies.RemoveAll();
}

std::string HostSession::ReadAnswer(const std::string& path)
{
    return TakeAnswer(AnswerFile::Read(path), path);
}

std::string HostSession::ReadAnswerArgument(const std::string& argument)
{
    const char* const input = "standard input";
    return argument == "-" ? TakeAnswer(AnswerFile::Read(std::cin, input), input) : ReadAnswer(argument);
}

std::string HostSession::TakeAnswer(const CATIDOMDocument_var& spAnswer, const std::string& name)
{
    AnswerText::LeftOut leftOut(spAnswer);
    CATListValCATBaseUnknown_var relations;
    Require(m_spIPdmNodeCont->UpdatePdmGraph(spAnswer, nullptr, &relations), ExitCode::BadInput, "answer " + name);
    unsigned char bAddNewNodes = TRUE;
    Require(m_spIPdmNodeCont->UpdateAllRepNodeContainers(&bAddNewNodes), ExitCode::Failure, "update after " + name);
    const std::string text = leftOut.Describe(relations);
    return text.empty() ? "" : name + ": " + text;
}

void HostSession::ExpandEverything()
{
    const CATListValQTBNodeRelationInfo relations = HostRelations::GetToExpand({});
    const ConsideringNodes considering(m_spIRepNodeCont, ALL_NODES);
    unsigned char bTrue = TRUE;
    unsigned char bFalse = FALSE;
    for (const CATBaseUnknown_var& spRoot : GetRoots()) {
        const QTBIRepNode_var spIRepNode(spRoot);
        unsigned char bIsDefaultNode = FALSE;
        if (SUCCEEDED(spIRepNode->IsRepDefaultNode(&bIsDefaultNode)) && bIsDefaultNode == FALSE) {
            Require(m_spIRepNodeCont->UpdateRepTree(spIRepNode, relations, &bFalse, nullptr, nullptr, &bTrue, &bFalse,
                                                    &bFalse),
                    ExitCode::Failure, "PDM window");
        }
    }
}

void HostSession::AddRoots(const QTBIRepNodeCont_var& spIRepNodeCont, const CATListValCATBaseUnknown_var& pdmObjects,
                           NodesToRetrieve nodes)
{
    unsigned char bTrue = TRUE;
    unsigned char bFalse = FALSE;
    HRESULT hr = S_OK;
    {
        const ConsideringNodes considering(spIRepNodeCont, nodes);
        for (const CATBaseUnknown_var& spPdmObject : pdmObjects) {
            const HRESULT hrOfRoot = spIRepNodeCont->UpdateRepTrees(spPdmObject, CATListValQTBNodeRelationInfo(),
                                                                    &bTrue, nullptr, nullptr, &bFalse);
            hr = FAILED(hr) ? hr : hrOfRoot;
        }
    }
    Require(hr, ExitCode::Failure, "root");
    Require(spIRepNodeCont->UpdateQtbWindow(&bTrue, &bFalse), ExitCode::Failure, "PDM window");
}

void HostSession::ReplaceRoots(const QTBIRepNodeCont_var& spIRepNodeCont,
                               const CATListValCATBaseUnknown_var& pdmObjects, NodesToRetrieve nodes)
{
    unsigned char bTrue = TRUE;
    unsigned char bFalse = FALSE;
    Require(spIRepNodeCont->AddAsRepRootNodes(CATListValCATBaseUnknown_var(), &bTrue, &bFalse, nullptr, nullptr),
            ExitCode::Failure, "PDM window");
    AddRoots(spIRepNodeCont, pdmObjects, nodes);
}

CATListValCATBaseUnknown_var HostSession::GetRoots() const
{
    CATListValCATBaseUnknown_var roots;
    unsigned char bFalse = FALSE;
    Require(m_spIRepNodeCont->GetRepRootNodes(&roots, &bFalse, &bFalse), ExitCode::Failure, "PDM window");
    return roots;
}

std::string HostSession::Describe(HRESULT hr)
{
    if (hr == E_OUTOFMEMORY) {
        return NO_MEMORY;
    }
    const CATError* pError = CATError::CATGetLastError(hr, nullptr);
    return pError != nullptr ? std::string(pError->GetNLSMessage().View()) : "not possible";
}

void HostSession::RequireFile(const std::string& path, const std::string& role)
{
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (error && status.type() != fs::file_type::not_found) {
        throw HostError(ExitCode::BadInput, role + " " + path + ": " + error.message());
    }
    if (!fs::exists(status)) {
        throw HostError(ExitCode::BadInput, role + " " + path + " does not exist");
    }
    if (fs::is_directory(status)) {
        throw HostError(ExitCode::BadInput, role + " " + path + " is a folder, not a file");
    }
}

void HostSession::Require(HRESULT hr, ExitCode exitCode, const std::string& what)
{
    if (FAILED(hr)) {
        throw HostError(exitCode, what + ": " + Describe(hr));
    }
}
