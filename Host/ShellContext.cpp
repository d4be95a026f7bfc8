#include "ShellContext.h"

#include <charconv>

#include "CATFrmLayout.h"
#include "QTBConstants.h"
#include "QTBINodeAttributes.h"
#include "QTBIRepNodeCont.h"
#include "QTBNodeRelationInfo.h"
#include "QTBRepTreeUtil.h"
#include "QTBSchema.h"
#include "QTBSchemaRelation.h"
#include "QTBSchemaUtil.h"

CATFrmWindow* ShellContext::GetWindow() const
{
    const CATFrmLayout* pLayout = CATFrmLayout::GetCurrentLayout();
    CATFrmWindow* pWindow = pLayout != nullptr ? pLayout->GetCurrentWindow() : nullptr;
    if (pWindow == nullptr) {
        throw HostError(ExitCode::Usage, "no window is open");
    }
    return pWindow;
}

QTBIRepNodeCont_var ShellContext::GetContainer() const
{
    QTBIRepNodeCont_var spIRepNodeCont;
    if (FAILED(QTBRepTreeUtil::GetRepNodeContOfWindow(GetWindow(), &spIRepNodeCont))) {
        throw HostError(ExitCode::Usage, "the current window is no PDM window");
    }
    return spIRepNodeCont;
}

bool ShellContext::IsInTree(const QTBIRepNode_var& spIRepNode)
{
    QTBIRepNodeCont_var spIRepNodeCont;
    QTBIRepNode_var spIFound;
    CATUnicodeString usKey;
    unsigned char bFound = FALSE;
    return SUCCEEDED(spIRepNode->GetRepNodeContainer(&spIRepNodeCont)) &&
           SUCCEEDED(QTBINodeAttributes_var(spIRepNode)->GetKey(&usKey)) &&
           SUCCEEDED(spIRepNodeCont->GetRepNodeByKey(usKey, &spIFound, &bFound)) && bFound != FALSE;
}

QTBIRepNode_var ShellContext::GetNode(const std::string& name) const
{
    if (const std::size_t number = ToNumber(name); number > 0 && number <= treeNodes.size()) {
        QTBIRepNode_var spIRepNode(treeNodes[number - 1]);
        if (!IsInTree(spIRepNode)) {
            throw HostError(ExitCode::Usage, "line " + name + " has left the tree; tree prints it anew");
        }
        return spIRepNode;
    }
    QTBIPdmNode_var spIPdmNode;
    unsigned char bFound = FALSE;
    session.GetPdmNodeCont()->GetPdmNodeByKey(name.c_str(), &spIPdmNode, &bFound);
    CATListValCATBaseUnknown_var nodes;
    if (bFound != FALSE && SUCCEEDED(spIPdmNode->GetRepNodes(&nodes, GetContainer())) && nodes.Size() > 0) {
        return nodes[1];
    }
    throw HostError(ExitCode::Usage, name + " is neither a line of the tree printed last nor the key of an item that "
                                            "the current window shows");
}

QTBIPdmNode_var ShellContext::GetPdmNode(const std::string& name) const
{
    QTBIPdmNode_var spIPdmNode;
    if (FAILED(GetNode(name)->GetPdmNode(&spIPdmNode, FALSE, nullptr)) || spIPdmNode == NULL_var) {
        throw HostError(ExitCode::Failure, name + " lost its PDM item");
    }
    return spIPdmNode;
}

void ShellContext::AddRoots(const QTBIRepNodeCont_var& spIRepNodeCont, const CATListValCATBaseUnknown_var& pdmObjects)
{
    unsigned char bTrue = TRUE;
    unsigned char bFalse = FALSE;
    NodesToRetrieve nodes = ALL_NODES;
    spIRepNodeCont->SetPdmNodesToConsider(&nodes);
    HRESULT hr = S_OK;
    for (const CATBaseUnknown_var& spPdmObject : pdmObjects) {
        const HRESULT hrOfRoot = spIRepNodeCont->UpdateRepTrees(spPdmObject, CATListValQTBNodeRelationInfo(), &bTrue,
                                                                nullptr, nullptr, &bFalse);
        hr = FAILED(hr) ? hr : hrOfRoot;
    }
    nodes = ONLY_CURRENT_NODES;
    spIRepNodeCont->SetPdmNodesToConsider(&nodes);
    HostSession::Require(hr, ExitCode::Failure, "root");
    HostSession::Require(spIRepNodeCont->UpdateQtbWindow(&bTrue, &bFalse), ExitCode::Failure, "window");
}

CATListValCATUnicodeString ShellContext::GetKeys(const ShellArguments& names) const
{
    CATListValCATUnicodeString Keys;
    for (const std::string& name : names) {
        const std::size_t number = ToNumber(name);
        Keys.Append(number > 0 && number <= treeNodes.size() ? GetPdmNode(name)->GetPdmKey()
                                                             : CATUnicodeString(name.c_str()));
    }
    return Keys;
}

CATListValQTBNodeRelationInfo ShellContext::GetRelations(const ShellArguments& arguments, std::size_t first)
{
    QTBSchema* pSchema = nullptr;
    HostSession::Require(QTBSchemaUtil::GetCurrentSchemaPtr(&pSchema), ExitCode::Failure, "schema");
    CATListValQTBNodeRelationInfo relations;
    if (first >= arguments.size()) {
        for (int i = pSchema->GetRelationCount(); i >= 1; --i) {
            QTBSchemaRelation* pRelation = nullptr;
            HostSession::Require(pSchema->GetRelationPtr(i, &pRelation), ExitCode::Failure, "schema");
            relations.Append(QTBNodeRelationInfo(pRelation->GetName(), usLEFT_TO_RIGHT));
        }
    }
    for (std::size_t i = arguments.size(); i > first; --i) {
        std::string name = arguments[i - 1];
        const bool toTheLeft = name.ends_with(":left");
        name.resize(name.size() - (toTheLeft ? std::string_view(":left").size() : 0));
        QTBSchemaRelation* pRelation = nullptr;
        if (FAILED(pSchema->GetRelationPtr(name.c_str(), &pRelation))) {
            throw HostError(ExitCode::Usage, "the schema has no relation " + name);
        }
        relations.Append(QTBNodeRelationInfo(name.c_str(), toTheLeft ? usRIGHT_TO_LEFT : usLEFT_TO_RIGHT));
    }
    return relations;
}

void ShellContext::ForgetNodes()
{
    menu.Close();
    treeNodes.clear();
}

std::size_t ShellContext::ToNumber(const std::string& text)
{
    std::size_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? number : 0;
}
