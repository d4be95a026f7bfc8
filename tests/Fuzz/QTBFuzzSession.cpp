#include "QTBFuzzSession.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <memory>
#include <streambuf>

#include "CATBaseUnknown.h"
#include "CATCmdContainer.h"
#include "CATDocumentServices.h"
#include "CATFrmWindow.h"
#include "CATICSOFilter.h"
#include "CATIContextualMenu.h"
#include "CATINavigateObject.h"
#include "CATMsgCatalog.h"
#include "QTBConstants.h"
#include "QTBDocUtil.h"
#include "QTBGlobVarsUtil.h"
#include "QTBILinkToPsn.h"
#include "QTBINodeAttributes.h"
#include "QTBINodeRelations.h"
#include "QTBIPdmNode.h"
#include "QTBIPdmObjNode.h"
#include "QTBIPdmRelNode.h"
#include "QTBIQtbFrmWindow.h"
#include "QTBIRepNode.h"
#include "QTBInvariants.h"
#include "QTBNodeAttr.h"
#include "QTBNodeRelationInfo.h"
#include "QTBRepTreeUtil.h"
#include "QTBSchema.h"
#include "QTBSchemaRelation.h"
#include "QTBSchemaUtil.h"
#include "QTBTestFolder.h"

namespace {

// What inputs make the library print is not worth reading.
class Silence : public std::streambuf
{
public:
    Silence()
    {
        std::cout.rdbuf(this);
        std::cerr.rdbuf(this);
    }

protected:
    int overflow(int c) override { return c; }
    std::streamsize xsputn(const char*, std::streamsize count) override { return count; }
};

constexpr const char* SCHEMA = QTB_SOURCE_DIR "/resources/schema/QTBSchema.xml";
// Small enough that an input whose tree has more of them is soon done with.
constexpr const char* MAX_REP_NODES = "100";

void SetUpProcess()
{
    static const bool s_isDone = [] {
        // Never destroyed: the streams are flushed when everything else has gone.
        static Silence* const s_pSilence = new Silence;
        static_cast<void>(s_pSilence);
        setenv("QTB_MAX_REP_NODES", MAX_REP_NODES, 1);
        setenv("QTB_MAX_PRODUCTS", MAX_REP_NODES, 1);
        CATMsgCatalog::SetSearchPath({QTB_SOURCE_DIR "/resources/msgcatalog"});
        QTBFuzzSession::LoadShippedSchema();
        return true;
    }();
    static_cast<void>(s_isDone);
}

void LookAtPdmNode(const CATBaseUnknown_var& spNode)
{
    const QTBIPdmNode_var spIPdmNode(spNode);
    const QTBINodeAttributes_var spINodeAttributes(spNode);
    CATUnicodeString usText;
    spIPdmNode->GetDescriptionString(&usText);
    spIPdmNode->GetClassName(&usText);
    CATListValCATUnicodeString names;
    spINodeAttributes->GetAllAttributeNames(&names);
    for (const CATUnicodeString& usName : names) {
        QTBNodeAttr* pNodeAttr = nullptr;
        if (SUCCEEDED(spINodeAttributes->GetAttribute(usName, &pNodeAttr)) && pNodeAttr != nullptr) {
            pNodeAttr->ToString();
        }
        unsigned char bValue = FALSE;
        spIPdmNode->GetQtbInfoAttr(usName, &bValue, FALSE, nullptr, TRUE);
        spIPdmNode->GetQtbAttr(usName, &usText, FALSE, nullptr, TRUE);
    }
}

void LookAtRepNode(const CATBaseUnknown_var& spNode)
{
    const QTBIRepNode_var spIRepNode(spNode);
    CATUnicodeString usText;
    spIRepNode->GetDisplayString(&usText);
    QTBIRepNode_var spIRepNodeOnParent;
    spIRepNode->GetParentObject(&spIRepNodeOnParent);
    if (const CATINavigateObject_var spINavigateObject(spNode); spINavigateObject != NULL_var) {
        const std::unique_ptr<CATListValCATBaseUnknown_var> pChildren(spINavigateObject->GetChildren());
    }
    if (const CATIContextualMenu_var spIContextualMenu(spNode); spIContextualMenu != NULL_var) {
        CATCmdAccess* pMenu = nullptr;
        spIContextualMenu->GetContextualMenu(pMenu);
        CATCmdContainer::Dismiss(pMenu);
    }
    if (const QTBILinkToPsn_var spILinkToPsn(spNode); spILinkToPsn != NULL_var) {
        unsigned char bExist = FALSE;
        CATListValCATBaseUnknown_var products;
        spILinkToPsn->CorrespondingPsnNodesExist(&bExist, &products, nullptr);
    }
    unsigned char bFlag = FALSE;
    spIRepNode->Highlight(&bFlag, &bFlag);
}

CATListValCATBaseUnknown_var GetRoots(const QTBIRepNodeCont_var& spIRepNodeCont)
{
    CATListValCATBaseUnknown_var roots;
    unsigned char bFalse = FALSE;
    spIRepNodeCont->GetRepRootNodes(&roots, &bFalse, &bFalse);
    return roots;
}

} // namespace

QTBFuzzSession::QTBFuzzSession()
{
    SetUpProcess();
    QTBGlobVarsUtil::EndSession();
    m_ComponentsBefore = CATBaseUnknown::GetLiveComponentCount();
}

QTBFuzzSession::~QTBFuzzSession()
{
    CATDocumentServices::RemoveAll();
    QTBGlobVarsUtil::EndSession();
    const int left = CATBaseUnknown::GetLiveComponentCount() - m_ComponentsBefore;
    if (left != 0) {
        Fail(std::to_string(left) + " components outlive the session");
    }
}

void QTBFuzzSession::LoadShippedSchema()
{
    if (FAILED(QTBSchemaUtil::LoadSchema(SCHEMA))) {
        Fail("the shipped schema cannot be read");
    }
}

QTBIPdmNodeCont_var QTBFuzzSession::GetPdmNodeCont()
{
    QTBIPdmNodeCont_var spIPdmNodeCont;
    QTBGlobVarsUtil::GetGlobalPdmNodeContainer(&spIPdmNodeCont);
    return spIPdmNodeCont;
}

void QTBFuzzSession::ReadAnswer(std::string_view xml)
{
    const QTBIPdmNodeCont_var spIPdmNodeCont = GetPdmNodeCont();
    if (SUCCEEDED(spIPdmNodeCont->UpdatePdmGraph(CATUnicodeString(xml), nullptr, nullptr))) {
        unsigned char bAddNewNodes = TRUE;
        spIPdmNodeCont->UpdateAllRepNodeContainers(&bAddNewNodes);
    }
}

QTBIRepNodeCont_var QTBFuzzSession::OpenWindow()
{
    QTBIQtbFrmWindow_var spIQtbFrmWindow;
    CATFrmWindow* pFrmWindow = nullptr;
    QTBIRepNodeCont_var spIRepNodeCont;
    if (FAILED(QTBDocUtil::CreateNewQtbDocument(&spIQtbFrmWindow, nullptr)) ||
        FAILED(spIQtbFrmWindow->GetFrmWindowPtr(&pFrmWindow)) ||
        FAILED(QTBRepTreeUtil::GetRepNodeContOfWindow(pFrmWindow, &spIRepNodeCont))) {
        Fail("no PDM window can be opened");
    }
    return spIRepNodeCont;
}

void QTBFuzzSession::ExpandAll(const QTBIRepNodeCont_var& spIRepNodeCont, bool leftToRight)
{
    QTBSchema* pSchema = nullptr;
    if (FAILED(QTBSchemaUtil::GetCurrentSchemaPtr(&pSchema))) {
        return;
    }
    CATListValQTBNodeRelationInfo relations;
    for (int i = 1; i <= pSchema->GetRelationCount(); ++i) {
        QTBSchemaRelation* pRelation = nullptr;
        if (SUCCEEDED(pSchema->GetRelationPtr(i, &pRelation))) {
            relations.Append(
                QTBNodeRelationInfo(pRelation->GetName(), leftToRight ? usLEFT_TO_RIGHT : usRIGHT_TO_LEFT));
        }
    }
    NodesToRetrieve nodes = ALL_NODES;
    spIRepNodeCont->SetPdmNodesToConsider(&nodes);
    unsigned char bTrue = TRUE;
    unsigned char bFalse = FALSE;
    for (const CATBaseUnknown_var& spRoot : GetRoots(spIRepNodeCont)) {
        spIRepNodeCont->UpdateRepTree(spRoot, relations, &bFalse, nullptr, nullptr, &bTrue, &bTrue, &bFalse);
    }
}

void QTBFuzzSession::FoldSome(const QTBIRepNodeCont_var& spIRepNodeCont)
{
    for (const CATBaseUnknown_var& spRoot : GetRoots(spIRepNodeCont)) {
        CATListValCATBaseUnknown_var children;
        if (SUCCEEDED(QTBIRepNode_var(spRoot)->GetDirectChildren(&children)) && children.Size() > 0) {
            QTBIRepNode_var spIRepNode(children[1]);
            spIRepNodeCont->DeExpand(&spIRepNode);
        }
    }
    if (const CATListValCATBaseUnknown_var roots = GetRoots(spIRepNodeCont); roots.Size() > 1) {
        QTBIRepNode_var spIRepNode(roots[1]);
        spIRepNodeCont->DeExpand(&spIRepNode);
    }
}

void QTBFuzzSession::LookAtEverything(const QTBIRepNodeCont_var& spIRepNodeCont)
{
    CATListValCATBaseUnknown_var nodes;
    GetPdmNodeCont()->GetAllPdmNodes(&nodes);
    for (const CATBaseUnknown_var& spNode : nodes) {
        LookAtPdmNode(spNode);
    }
    spIRepNodeCont->GetAllRepNodes(&nodes);
    // Those of a large tree are alike.
    constexpr int ENOUGH = 20;
    for (int i = 1; i <= nodes.Size() && i <= ENOUGH; ++i) {
        LookAtRepNode(nodes[i]);
    }
}

void QTBFuzzSession::CheckInvariants()
{
    const std::vector<std::string> broken = QTBFindBrokenInvariants({}, QTBAnswers::Contradict);
    if (!broken.empty()) {
        Fail(broken.front());
    }
}

std::vector<std::string_view> QTBFuzzSession::SplitLines(std::string_view text)
{
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        lines.push_back(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return lines;
}

const std::string& QTBFuzzSession::GetFolder()
{
    static const QTBTestFolder s_Folder{QTBTestFolder::GetFastParent()};
    static const std::string s_Path = s_Folder.GetPath();
    return s_Path;
}

std::string QTBFuzzSession::WriteFile(const std::string& name, std::string_view content)
{
    std::string path = GetFolder() + "/" + name;
    std::ofstream(path, std::ios::binary | std::ios::trunc)
        .write(content.data(), static_cast<std::streamsize>(content.size()));
    return path;
}

void QTBFuzzSession::Fail(const std::string& what)
{
    std::fprintf(stderr, "broken: %s\n", what.c_str());
    std::abort();
}
