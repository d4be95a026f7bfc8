#include "QTBCommands.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <utility>

#include "CATAfrGetCommandHeader.h"
#include "CATApplicationFrame.h"
#include "CATCommandHeaderRegister.h"
#include "QTBBndBoxCommands.h"
#include "QTBCommandText.h"
#include "QTBContextMenuInfo.h"
#include "QTBExpandCommands.h"
#include "QTBIRepNode.h"
#include "QTBItemCommands.h"
#include "QTBRelationCommands.h"
#include "QTBRequestCommands.h"
#include "QTBTreeCommands.h"

namespace {

using Function = HRESULT (*)(const QTBIRepNode_var& spIRepNode);

// Expands along everything that the schema offers for the node's class, or along the relations of one name.
HRESULT ExpandOffered(const QTBIRepNode_var& spIRepNode, const CATUnicodeString& usRelationshipName,
                      unsigned char bMultiExpand)
{
    CATListValQTBExpDlgRelExpandInfo relations;
    const HRESULT hr = QTBExpandCommands::GetRelations(spIRepNode, usRelationshipName, bMultiExpand, &relations);
    if (FAILED(hr)) {
        return hr;
    }
    return relations.Size() > 0 ? QTBExpandCommands::Expand(spIRepNode, relations) : E_FAIL;
}

template <unsigned char bMultiExpand>
HRESULT ExpandAll(const QTBIRepNode_var& spIRepNode)
{
    return ExpandOffered(spIRepNode, "", bMultiExpand);
}

struct Command
{
    const char* headerId;
    // Class of the header, which is also the catalog of its texts.
    const char* headerClass;
    // Name in the query dialog, empty for a command that it does not have.
    const char* dialogCommand;
    // Null for a command that only the service of that name can carry out.
    Function function;
    const char* service;
};

constexpr const char* UI = "QTBUI";

// clang-format off
const Command COMMANDS[] = {
    {"QTBPdmWksCtxExpandCmdHdr", "QTBCtxExpandCmdHdr", "QTB_Ctx_Expand", &ExpandAll<FALSE>, ""},
    {"QTBPdmWksCtxExpandMultiCmdHdr", "QTBCtxExpandMultiCmdHdr", "", &ExpandAll<TRUE>, ""},
    {"QTBPdmWksCtxDeExpandCmdHdr", UI, "", &QTBExpandCommands::DeExpand, ""},
    {"QTBPdmWksCtxOpenInNewWndCmdHdr", "QTBCtxOpenInNewWndCmdHdr", "QTB_Ctx_OpenInNewWnd",
     &QTBTreeCommands::OpenInNewWindow, ""},
    {"QTBPdmWksCtxCheckInCmdHdr", UI, "QTB_Ctx_CheckIn", &QTBRequestCommands::CheckIn, ""},
    {"QTBPdmWksCtxCheckOutCmdHdr", UI, "QTB_Ctx_CheckOut", &QTBRequestCommands::CheckOut, ""},
    {"QTBPdmWksCtxPromoteCmdHdr", UI, "QTB_Ctx_Promote", &QTBRequestCommands::Promote, ""},
    {"QTBPdmWksCtxReviseCmdHdr", UI, "QTB_Ctx_Revise", &QTBRequestCommands::Revise, ""},
    {"QTBPdmWksCtxUpdateSubCmpRelsCmdHdr", UI, "", &QTBRelationCommands::UpdateBelow, ""},
    {"QTBPdmWksCtxUpdateParentCmpRelCmdHdr", UI, "", &QTBRelationCommands::UpdateParent, ""},
    {"QTBPdmWksCtxLoadStructureCmdHdr", "QTBCtxLoadStructureCmdHdr", "QTB_Ctx_LoadStructure", nullptr, "GetFiles"},
    {"QTBPdmWksCtxAddTempCmdHdr", "QTBCtxAddTempCmdHdr", "QTB_Ctx_AddTemp", nullptr, "GetFiles"},
    {"QTBPdmWksCtxOpenCmdHdr", "QTBCtxOpenCmdHdr", "QTB_Ctx_Open", nullptr, "GetFiles"},
    {"QTBPdmWksCtxTempOpenCmdHdr", "QTBCtxTempOpenCmdHdr", "", nullptr, "GetFiles"},
    {"QTBPdmWksCtxHighlightCmdHdr", UI, "", &QTBTreeCommands::Highlight, ""},
    {"QTBPdmWksCtxCopyAttributesCmdHdr", "QTBCtxCopyAttributesCmdHdr", "QTB_Ctx_Copy",
     &QTBItemCommands::CopyAttributes, ""},
    {"QTBPdmWksCtxExecuteCmdHdr", UI, "QTB_Ctx_Execute", nullptr, "Execute"},
    {"QTBPdmWksCtxExpandBndBoxCmdHdr", UI, "", nullptr, "GetBoundingBoxes"},
    {"QTBPdmWksCtxOpenSelectedBndBoxCmdHdr", UI, "", nullptr, "GetFiles"},
    {"QTBGenWksCtxPropertiesCmdHdr", UI, "QTB_Ctx_Properties", &QTBItemCommands::ShowProperties, ""},
    {"QTBGenWksCtxUpdateItemCmdHdr", "QTBCtxUpdateItemCmdHdr", "", &QTBRequestCommands::UpdateItem, ""},
    {"QTBPdmWksCtxDeleteCmdHdr", "QTBCtxDeleteCmdHdr", "QTB_Ctx_Delete", &QTBItemCommands::Delete, ""},
    {"QTBPdmWksCtxDelNewestFileOfBusObjCmdHdr", UI, "QTB_Ctx_DelNewestFile",
     &QTBRequestCommands::DeleteNewestVersion, ""},
};
// clang-format on

// The commands on bounding boxes, which are no rep nodes.
struct BndBoxCommand
{
    const char* headerId;
    unsigned char bMarks;
};
constexpr BndBoxCommand BND_BOX_COMMANDS[] = {{"QTBPdmWksCtxMarkBndBoxCmdHdr", TRUE},
                                              {"QTBPdmWksCtxUnMarkBndBoxCmdHdr", FALSE}};

// Adds a header unless there is one.
void AddHeader(const char* id, const char* headerClass, CATCommandHeader::Action action)
{
    CATCommandHeader* pHeader = nullptr;
    if (FAILED(CATAfrGetCommandHeader(id, &pHeader)) || pHeader == nullptr) {
        CATApplicationFrame::GetFrame()->GetCommandHeaders().Add(
            std::make_unique<CATCommandHeader>(id, headerClass, std::move(action)));
    }
}

HRESULT Run(const Command& command, const QTBIRepNode_var& spIRepNode)
{
    if (spIRepNode == NULL_var) {
        return E_FAIL;
    }
    return command.function != nullptr ? command.function(spIRepNode)
                                       : QTBItemCommands::FailWithoutService(command.service);
}

HRESULT RunExpand(const CATUnicodeString& usCommandText, const QTBIRepNode_var& spIRepNode)
{
    QTBExpDlgRelExpandInfo info;
    const HRESULT hr = QTBCommandText::ReadExpand(usCommandText, &info);
    if (hr != S_OK) {
        return hr;
    }
    CATListValQTBExpDlgRelExpandInfo relations;
    relations.Append(info);
    return QTBExpandCommands::Expand(spIRepNode, relations);
}

HRESULT RunPdmTree(const CATUnicodeString& usCommandText, const QTBIRepNode_var& spIRepNode)
{
    CATUnicodeString usTreeName;
    const HRESULT hr = QTBCommandText::ReadPdmTree(usCommandText, &usTreeName);
    return hr == S_OK ? QTBExpandCommands::ExpandPdmTree(spIRepNode, usTreeName) : hr;
}

HRESULT RunCreation(const CATUnicodeString& usCommandText, const QTBIRepNode_var& spIRepNode)
{
    QTBCommandText::Creation creation;
    const HRESULT hr = QTBCommandText::ReadCreation(usCommandText, &creation);
    return hr == S_OK ? QTBRequestCommands::Create(creation, spIRepNode) : hr;
}

// Identifies the interpreter at the application's register.
constexpr char INTERPRETER = 0;

} // namespace

void QTBCommands::AddHeaders()
{
    for (const Command& command : COMMANDS) {
        AddHeader(command.headerId, command.headerClass,
                  [&command](const CATBaseUnknown_var& spObject) { return Run(command, spObject); });
    }
    for (const BndBoxCommand& command : BND_BOX_COMMANDS) {
        AddHeader(command.headerId, UI, [&command](const CATBaseUnknown_var& spObject) {
            return QTBBndBoxCommands::SetMarked(spObject, command.bMarks);
        });
    }
    CATCommandHeaderRegister& headers = CATApplicationFrame::GetFrame()->GetCommandHeaders();
    headers.RemoveInterpreter(&INTERPRETER);
    headers.AddInterpreter(&INTERPRETER, [](const CATUnicodeString& usCommandText, const CATBaseUnknown_var& spObject) {
        return Interpret(usCommandText, spObject);
    });
}

void QTBCommands::RemoveHeaders()
{
    CATCommandHeaderRegister& headers = CATApplicationFrame::GetFrame()->GetCommandHeaders();
    for (const Command& command : COMMANDS) {
        headers.Remove(command.headerId);
    }
    for (const BndBoxCommand& command : BND_BOX_COMMANDS) {
        headers.Remove(command.headerId);
    }
    headers.RemoveInterpreter(&INTERPRETER);
}

HRESULT QTBCommands::Start(const CATUnicodeString& usCommandName, const QTBIRepNode_var& spIRepNode)
{
    const auto* const pCommand =
        std::find_if(std::begin(COMMANDS), std::end(COMMANDS), [&usCommandName](const Command& command) {
            return !usCommandName.IsEmpty() &&
                   (usCommandName == command.headerId || usCommandName == command.dialogCommand);
        });
    return pCommand != std::end(COMMANDS) ? Run(*pCommand, spIRepNode) : E_FAIL;
}

HRESULT QTBCommands::Start(const QTBContextMenuInfo& entry, const QTBIRepNode_var& spIRepNode)
{
    if (entry.GetType() == QTB_CTX_MNU_INFO_SEPARATOR) {
        return S_OK;
    }
    if (entry.IsEnabled() == FALSE) {
        return E_FAIL;
    }
    return entry.GetType() == QTB_CTX_MNU_INFO_RELATION ? ExpandOffered(spIRepNode, entry.GetActionName(), FALSE)
                                                        : Start(entry.GetCommandName(), spIRepNode);
}

HRESULT QTBCommands::Interpret(const CATUnicodeString& usCommandText, const QTBIRepNode_var& spIRepNode)
{
    for (const auto run : {&RunExpand, &RunPdmTree, &RunCreation}) {
        if (const HRESULT hr = run(usCommandText, spIRepNode); hr != S_FALSE) {
            return hr;
        }
    }
    return S_FALSE;
}
