#include "SessionPlayer.h"

#include <algorithm>
#include <array>
#include <exception>
#include <filesystem>
#include <fstream>

#include "CATBaseUnknown.h"
#include "CATDocument.h"
#include "CATDocumentServices.h"
#include "CATIPrdLink.h"
#include "CATProductServices.h"
#include "CATXMLDocumentFactory.h"
#include "QTBIPdmNode.h"
#include "QTBIRepNode.h"
#include "QTBInvariants.h"
#include "QTBPdmStore.h"
#include "QTBRepTreeUtil.h"
#include "QTBXmlUtil.h"

#include "CATFrmLayout.h"

namespace fs = std::filesystem;

namespace {

std::vector<std::string> Split(const std::string& line)
{
    std::istringstream stream(line);
    std::vector<std::string> words;
    for (std::string word; stream >> word;) {
        words.push_back(word);
    }
    return words;
}

CATIDOMDocument_var ReadDocument(const std::string& text)
{
    CATIDOMDocument_var spDocument;
    QTBXmlUtil::GetDomDocument(CATUnicodeString(std::string_view(text)), &spDocument);
    return spDocument;
}

std::string ReadFile(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

} // namespace

SessionPlayer::SessionPlayer(const std::string& folder)
    : m_Folder(folder), m_pSession(std::make_unique<HostSession>("", "")),
      m_pShell(std::make_unique<Shell>(*m_pSession, m_Output))
{
}

SessionPlayer::~SessionPlayer()
{
    m_pStore.reset();
    m_pShell.reset();
    m_pSession.reset();
    CATDocumentServices::RemoveAll();
}

bool SessionPlayer::IsShellLine(const std::string& line)
{
    static constexpr std::array<std::string_view, 6> OWN = {"remove ",  "prune ", "update ",
                                                            "product ", "store ", "next session"};
    return std::none_of(OWN.begin(), OWN.end(), [&](std::string_view word) { return line.starts_with(word); });
}

std::string SessionPlayer::Play(const SessionStep& step)
{
    try {
        Do(step);
    } catch (const std::exception& exception) {
        return std::string("an exception came out: ") + exception.what();
    }
    m_Output.str("");
    m_Answers = std::max(m_Answers, step.answers);
    const std::vector<std::string> broken = QTBFindBrokenInvariants({}, m_Answers);
    return broken.empty() ? std::string() : broken.front();
}

void SessionPlayer::Do(const SessionStep& step)
{
    if (!step.fileName.empty()) {
        std::ofstream(m_Folder + "/" + step.fileName, std::ios::binary | std::ios::trunc) << step.content;
    }
    if (IsShellLine(step.line)) {
        std::string line = step.line;
        if (!step.fileName.empty()) {
            line.replace(line.size() - step.fileName.size(), step.fileName.size(), m_Folder + "/" + step.fileName);
        }
        m_pShell->Execute(line);
        return;
    }
    const Words words = Split(step.line);
    if (words[0] == "remove") {
        Remove(words);
    } else if (words[0] == "prune") {
        Prune(words);
    } else if (words[0] == "update") {
        SetUpdateMode(words);
    } else if (words[0] == "product") {
        ChangeProduct(words);
    } else {
        AskStore(words);
    }
}

void SessionPlayer::Remove(const Words& words) const
{
    m_pSession->GetPdmNodeCont()->RemoveNodeFromPdmGraph(CATUnicodeString(std::string_view(words[1])), FALSE, FALSE,
                                                         TRUE, nullptr);
}

void SessionPlayer::Prune(const Words& words) const
{
    QTBIPdmNode_var spIPdmNode;
    unsigned char bFound = FALSE;
    CATListValCATBaseUnknown_var repNodes;
    m_pSession->GetPdmNodeCont()->GetPdmNodeByKey(words[1].c_str(), &spIPdmNode, &bFound);
    if (bFound == FALSE || FAILED(spIPdmNode->GetRepNodes(&repNodes, NULL_var))) {
        return;
    }
    unsigned char bRecursive = TRUE;
    for (const CATBaseUnknown_var& spRepNode : repNodes) {
        const QTBIRepNode_var spIRepNode(spRepNode);
        CATListValQTBNodeRelationInfo relations;
        spIRepNode->GetPdmRelationsToBeDisplayed(&relations);
        spIRepNode->MarkChildrenForRemoval(relations, &bRecursive);
        spIRepNode->CleanUpChildren(&bRecursive);
    }
}

void SessionPlayer::SetUpdateMode(const Words& words) const
{
    const CATFrmLayout* pLayout = CATFrmLayout::GetCurrentLayout();
    QTBIRepNodeCont_var spIRepNodeCont;
    if (pLayout != nullptr && pLayout->GetCurrentWindow() != nullptr &&
        SUCCEEDED(QTBRepTreeUtil::GetRepNodeContOfWindow(pLayout->GetCurrentWindow(), &spIRepNodeCont))) {
        RepChildRelationsToUpdate relations =
            words[1] == "stored" ? ALL_RELATIONS_STORED_IN_REP_NODE : ONLY_NEW_RELATIONS;
        spIRepNodeCont->SetRepChildRelationsToUpdate(&relations);
    }
}

void SessionPlayer::ChangeProduct(const Words& words)
{
    CATIProduct_var spIProduct;
    if (FAILED(CATProductServices::FindRootProduct(words[2].c_str(), &spIProduct))) {
        return;
    }
    if (words[1] == "add") {
        CATIProduct_var spIChild;
        if (SUCCEEDED(CATProductServices::FindRootProduct(words[3].c_str(), &spIChild))) {
            spIProduct->AddChild(spIChild, "Added.1", nullptr);
        }
    } else if (words[1] == "remove") {
        const std::unique_ptr<CATListValCATBaseUnknown_var> pChildren(spIProduct->GetChildren("CATIProduct"));
        if (pChildren->Size() > 0) {
            spIProduct->RemoveChild((*pChildren)[1]);
        }
    } else if (words[1] == "number") {
        spIProduct->SetPartNumber(words[3].c_str());
    } else if (CATDocument * pDocument; SUCCEEDED(CATIPrdLink_var(spIProduct)->GetDocument(&pDocument))) {
        CATDocumentServices::Remove(*pDocument);
    }
}

void SessionPlayer::AskStore(const Words& words)
{
    if (m_pStore == nullptr) {
        const std::string path = m_Folder + "/pdm.store";
        QTBPdmStore::Options options;
        options.user = "kim";
        HostSession::Require(QTBPdmStore::Create(path.c_str()), ExitCode::Failure, path);
        HostSession::Require(QTBPdmStore::Open(path.c_str(), options, &m_pStore), ExitCode::Failure, path);
    }
    std::string answer;
    const QTBPdmStore::Receiver receiver = [&answer](std::string_view piece) { answer.append(piece); };
    const std::string& request = words[1];
    const QTBPdmStore::Keys keys = {CATUnicodeString(std::string_view(words[2]))};
    HRESULT hr = E_FAIL;
    if (request == "import") {
        QTBStoreImportReport report;
        hr = m_pStore->Import(ReadDocument(ReadFile(m_Folder + "/" + words[2])), "", &report);
    } else if (request == "checkout") {
        hr = m_pStore->CheckOut(keys, receiver);
    } else if (request == "checkin") {
        hr = m_pStore->CheckIn(keys, {}, receiver);
    } else if (request == "promote") {
        hr = m_pStore->Promote(keys, receiver);
    } else if (request == "revise") {
        hr = m_pStore->Revise(keys, receiver);
    } else if (request == "delete") {
        hr = m_pStore->Delete(keys, CATUnicodeString(), receiver);
    } else if (request == "update") {
        hr = m_pStore->UpdateAttributes(keys[0], "<a name=\"Name\">changed</a>", receiver);
    } else if (request == "relate") {
        hr = m_pStore->CreateRelation("PartPart", keys[0], CATUnicodeString(std::string_view(words[3])),
                                      CATUnicodeString(), receiver);
    } else {
        hr = m_pStore->Expand({keys, {{"PartPart", true}, {"PartPart", false}}, -1}, receiver);
    }
    if (SUCCEEDED(hr) && !answer.empty()) {
        const QTBIPdmNodeCont_var& spIPdmNodeCont = m_pSession->GetPdmNodeCont();
        unsigned char bAddNewNodes = TRUE;
        const HRESULT read = spIPdmNodeCont->UpdatePdmGraph(ReadDocument(answer), nullptr, nullptr);
        // The store agrees with itself, yet one of its keys may be that of an item of another kind in the graph.
        if (m_Answers != QTBAnswers::Contradict) {
            HostSession::Require(read, ExitCode::Failure, "answer of the store");
        }
        spIPdmNodeCont->UpdateAllRepNodeContainers(&bAddNewNodes);
    }
}

std::string SessionPlayer::PlayOne(const SessionSteps& steps, std::size_t* pStep, const std::string& folder)
{
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        fs::remove_all(entry.path());
    }
    const int componentsBefore = CATBaseUnknown::GetLiveComponentCount();
    const int documentsBefore = CATXMLDocumentFactory::GetLiveDocumentCount();
    {
        SessionPlayer player(folder);
        for (std::size_t& i = *pStep; i < steps.size() && steps[i].line != NextSession().line; ++i) {
            if (const std::string broken = player.Play(steps[i]); !broken.empty()) {
                return "behind step " + std::to_string(i + 1) + " (" + steps[i].line + "): " + broken;
            }
        }
    }
    if (const int left = CATBaseUnknown::GetLiveComponentCount() - componentsBefore; left != 0) {
        return std::to_string(left) + " components outlive the session";
    }
    if (const int left = CATXMLDocumentFactory::GetLiveDocumentCount() - documentsBefore; left != 0) {
        return std::to_string(left) + " XML documents outlive the session";
    }
    return std::string();
}

std::string SessionPlayer::PlayAll(const SessionSteps& steps, const std::string& folder)
{
    std::string broken;
    for (std::size_t i = 0; i < steps.size() && broken.empty(); ++i) {
        broken = PlayOne(steps, &i, folder);
    }
    return broken;
}
