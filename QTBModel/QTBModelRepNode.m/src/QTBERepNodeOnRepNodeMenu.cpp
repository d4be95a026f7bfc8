// The part of QTBERepNodeOnRepNode on its context menu.

#include <memory>
#include <utility>

#include "CATCmdContainer.h"
#include "CATCmdSeparator.h"
#include "CATCmdStarter.h"
#include "CATMsgCatalog.h"
#include "QTBCheck.h"
#include "QTBCommandText.h"
#include "QTBDocUtil.h"
#include "QTBERepNodeOnRepNode.h"
#include "QTBEnvVarUtil.h"
#include "QTBExpDlgRelExpandInfo.h"
#include "QTBINodeAttributes.h"
#include "QTBIPdmNode.h"
#include "QTBIPdmObjNode.h"
#include "QTBIQtbFrmWindow.h"
#include "QTBIRepNode.h"
#include "QTBInfoUtil.h"
#include "QTBPdmTree.h"
#include "QTBSchema.h"
#include "QTBSchemaUtil.h"

namespace {

// Catalog of the texts of the items, and name of every separator.
constexpr const char* MENU_CATALOG = "QTBContextMenu";
constexpr const char* SEPARATOR = "NULL";
// Stands for the header of an item that has a command text instead.
constexpr const char* NO_HEADER = "\"dummy\"";

// The places where the schema offers actions.
constexpr const char* PDM_WINDOW = "PdmWindow";
constexpr const char* QUERY_DIALOG = "QueryDialog";

constexpr const char* CHECK_IN = "CheckIn";
constexpr const char* CHECK_OUT = "CheckOut";
constexpr const char* PROMOTE = "Promote";
constexpr const char* UPDATE_ITEM = "UpdateItem";
constexpr const char* EXPAND = "Expand";
constexpr const char* EXPAND_COMMAND = "QTB_Ctx_Expand";

// What an action needs besides being offered by the schema, and what makes its items.
enum class ActionKind
{
    Command,
    // Needs the newest version of the object.
    VersionCommand,
    // Not the schema's but the environment's to offer, on roots.
    BndBoxCommand,
    // The menus for expanding and creating, of objects.
    ExpandFamily,
    Creation
};

struct Action
{
    ActionKind kind;
    const char* name;
    // Text and command header of the item of the PDM window; without text there is none.
    const char* subMenuKey;
    const char* headerId;
    // Catalog of the title and command in the query dialog; without catalog there is no entry.
    const char* catalog;
    const char* command;
};

// clang-format off
// In the order of the menu. The commands of TempOpen and UpdateItem in the query dialog are those of AddTemp and of the
// properties; meant.
const Action ACTIONS[] = {
    {ActionKind::ExpandFamily, EXPAND, "", "", "", EXPAND_COMMAND},
    {ActionKind::Command, "DeExpand", "QTBDeExpandSubMenuStr", "QTBPdmWksCtxDeExpandCmdHdr", "", ""},
    {ActionKind::Command, "OpenInNewPdmWindow", "QTBOpenInNewWndSubMenuStr", "QTBPdmWksCtxOpenInNewWndCmdHdr",
     "QTBCtxOpenInNewWndCmdHdr", "QTB_Ctx_OpenInNewWnd"},
    {ActionKind::Command, CHECK_IN, "QTBCheckInSubMenuStr", "QTBPdmWksCtxCheckInCmdHdr", "QTBUI", "QTB_Ctx_CheckIn"},
    {ActionKind::Command, CHECK_OUT, "QTBCheckOutSubMenuStr", "QTBPdmWksCtxCheckOutCmdHdr", "QTBUI",
     "QTB_Ctx_CheckOut"},
    {ActionKind::VersionCommand, PROMOTE, "QTBPromoteSubMenuStr", "QTBPdmWksCtxPromoteCmdHdr", "QTBUI",
     "QTB_Ctx_Promote"},
    {ActionKind::VersionCommand, "Revise", "QTBReviseSubMenuStr", "QTBPdmWksCtxReviseCmdHdr", "QTBUI",
     "QTB_Ctx_Revise"},
    {ActionKind::Command, "UpdateSubCmpRels", "QTBUpdateSubCmpRelsSubMenuStr", "QTBPdmWksCtxUpdateSubCmpRelsCmdHdr",
     "", ""},
    {ActionKind::Command, "UpdateParentCmpRel", "QTBUpdateParentCmpRelSubMenuStr",
     "QTBPdmWksCtxUpdateParentCmpRelCmdHdr", "", ""},
    {ActionKind::Command, "LoadStructure", "QTBLoadStructureSubMenuStr", "QTBPdmWksCtxLoadStructureCmdHdr",
     "QTBCtxLoadStructureCmdHdr", "QTB_Ctx_LoadStructure"},
    {ActionKind::Command, "AddTemp", "QTBAddTempSubMenuStr", "QTBPdmWksCtxAddTempCmdHdr", "QTBCtxAddTempCmdHdr",
     "QTB_Ctx_AddTemp"},
    {ActionKind::Command, "Open", "QTBOpenSubMenuStr", "QTBPdmWksCtxOpenCmdHdr", "QTBCtxOpenCmdHdr", "QTB_Ctx_Open"},
    {ActionKind::Command, "TempOpen", "QTBTempOpenSubMenuStr", "QTBPdmWksCtxTempOpenCmdHdr", "QTBCtxTempOpenCmdHdr",
     "QTB_Ctx_AddTemp"},
    {ActionKind::Command, "Highlight", "QTBHighlightSubMenuStr", "QTBPdmWksCtxHighlightCmdHdr", "", ""},
    {ActionKind::Command, "CopyAttributes", "QTBCopyAttributesSubMenuStr", "QTBPdmWksCtxCopyAttributesCmdHdr",
     "QTBCtxCopyAttributesCmdHdr", "QTB_Ctx_Copy"},
    {ActionKind::Command, "Execute", "QTBExecuteSubMenuStr", "QTBPdmWksCtxExecuteCmdHdr", "QTBUI", "QTB_Ctx_Execute"},
    {ActionKind::BndBoxCommand, "", "QTBExpandBndBoxSubMenuStr", "QTBPdmWksCtxExpandBndBoxCmdHdr", "", ""},
    {ActionKind::BndBoxCommand, "", "QTBOpenSelectedBndBoxSubMenuStr", "QTBPdmWksCtxOpenSelectedBndBoxCmdHdr", "", ""},
    {ActionKind::Command, "Properties", "QTBPropertiesSubMenuStr", "QTBGenWksCtxPropertiesCmdHdr", "", ""},
    {ActionKind::Command, UPDATE_ITEM, "QTBUpdateItemSubMenuStr", "QTBGenWksCtxUpdateItemCmdHdr",
     "QTBCtxUpdateItemCmdHdr", "QTB_Ctx_Properties"},
    {ActionKind::Creation, "ContextCreate", "", "QTBPdmWksCtxCreateCmdHdr", "QTBCtxCreateCmdHdr", ""},
    {ActionKind::Command, "DeleteItem", "", "QTBPdmWksCtxDeleteCmdHdr", "QTBCtxDeleteCmdHdr", "QTB_Ctx_Delete"},
    {ActionKind::VersionCommand, "DeleteNewestVersion", "QTBDelNewestFileOfBusObjSubMenuStr",
     "QTBPdmWksCtxDelNewestFileOfBusObjCmdHdr", "QTBUI", "QTB_Ctx_DelNewestFile"},
};
// clang-format on

bool IsOfferedIn(const QTBSchemaNode& schemaNode, const char* action, const char* place)
{
    return schemaNode.ShowContextAction(action) != FALSE &&
           schemaNode.ShowContextActionIn(action).SearchSubString(place, 0) >= 0;
}

CATUnicodeString GetHeaderTitle(const char* catalog, const char* headerId)
{
    return CATMsgCatalog::BuildMessage(catalog, CATUnicodeString(catalog) + "." + headerId + ".Title");
}

std::unique_ptr<CATCmdContainer> MakeMenu(const char* catalog, const char* headerId)
{
    auto pMenu = std::make_unique<CATCmdContainer>(catalog);
    pMenu->SetTitle(GetHeaderTitle(catalog, headerId));
    return pMenu;
}

// What of a node decides, besides the schema, which actions it can have.
struct Conditions
{
    bool isObject;
    bool isNewestVersion;
    bool hasBndBoxItems;

    bool Allow(ActionKind kind) const
    {
        switch (kind) {
        case ActionKind::ExpandFamily:
        case ActionKind::Creation:
            return isObject;
        case ActionKind::VersionCommand:
            return isNewestVersion;
        case ActionKind::BndBoxCommand:
            return hasBndBoxItems;
        case ActionKind::Command:
            break;
        }
        return true;
    }
};

// A menu of the expand family: the action that offers it, and where its title stands.
struct ExpandMenu
{
    const char* action;
    const char* catalog;
    const char* headerId;

    std::unique_ptr<CATCmdContainer> Make() const { return MakeMenu(catalog, headerId); }
};
constexpr ExpandMenu EXPAND_MENU{EXPAND, "QTBCtxExpandCmdHdr", "QTBPdmWksCtxExpandCmdHdr"};
constexpr ExpandMenu MULTI_EXPAND_MENU{"MultipleExpand", "QTBCtxExpandMultiCmdHdr", "QTBPdmWksCtxExpandMultiCmdHdr"};
constexpr ExpandMenu CUSTOM_EXPAND_MENU{"CustomExpand", "QTBCtxCustomExpandCmdHdr", "QTBPdmWksCtxCustomExpandCmdHdr"};

// The object classes at the end of a relation from which a direction is followed, and the texts of the checks there.
struct LeftEnd
{
    static constexpr unsigned char IS_LEFT = TRUE;
    static constexpr const char* GET_OBJECT_NAME = "pRelation->GetLeftObjectName";
    static int GetCount(const QTBSchemaRelation& relation) { return relation.GetLeftObjectCount(); }
    static HRESULT GetName(const QTBSchemaRelation& relation, int i, CATUnicodeString* pusName)
    {
        return relation.GetLeftObjectName(i, pusName);
    }
};
struct RightEnd
{
    static constexpr unsigned char IS_LEFT = FALSE;
    static constexpr const char* GET_OBJECT_NAME = "pRelation->GetRightObjectName";
    static int GetCount(const QTBSchemaRelation& relation) { return relation.GetRightObjectCount(); }
    static HRESULT GetName(const QTBSchemaRelation& relation, int i, CATUnicodeString* pusName)
    {
        return relation.GetRightObjectName(i, pusName);
    }
};

} // namespace

// Puts items into a container one behind the other.
class QTBERepNodeOnRepNode::MenuItems
{
public:
    explicit MenuItems(CATCmdContainer* pContainer) : m_pContainer(pContainer) {}

    bool IsEmpty() const { return m_pLast == NULL; }

    void Append(std::unique_ptr<CATCmdAccess> pItem)
    {
        if (m_pLast == NULL) {
            m_pContainer->AddChild(pItem.get());
        } else {
            m_pLast->SetNext(pItem.get());
        }
        m_pLast = pItem.release();
    }

    void AppendSeparator() { Append(std::make_unique<CATCmdSeparator>(SEPARATOR)); }

    // An item that starts the command of a header.
    void AppendStarter(const char* subMenuKey, const char* headerId)
    {
        AppendStarter(std::make_unique<CATCmdStarter>(subMenuKey, headerId),
                      CATMsgCatalog::BuildMessage(MENU_CATALOG, subMenuKey));
    }

    // An item with a command text.
    void AppendTextStarter(const CATUnicodeString& usTitle, const CATUnicodeString& usCommandText)
    {
        AppendStarter(std::make_unique<CATCmdStarter>(usTitle, NO_HEADER, usCommandText), usTitle);
    }

    // A menu, unless nothing is in it.
    void AppendMenu(std::unique_ptr<CATCmdContainer> pMenu)
    {
        if (pMenu->GetChild() != NULL) {
            Append(std::move(pMenu));
        }
    }

private:
    void AppendStarter(std::unique_ptr<CATCmdStarter> pStarter, const CATUnicodeString& usTitle)
    {
        pStarter->SetTitle(usTitle);
        Append(std::move(pStarter));
    }

    CATCmdContainer* m_pContainer;
    CATCmdAccess* m_pLast = NULL;
};

HRESULT QTBERepNodeOnRepNode::InitContextMenuInfo(CATCmdContainer* pContainer, CATCmdAccess** ppFirstItem)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::InitContextMenuInfo");
    if (m_pFrmWindow == NULL) {
        if (const HRESULT hr = OpenDocumentOfQueryResult(); FAILED(hr)) {
            return hr;
        }
    }
    m_ContextMenuInfos.RemoveAll();
    m_SecondContextMenuInfos.RemoveAll();
    auto pSeparator = std::make_unique<CATCmdSeparator>(SEPARATOR);
    if (ppFirstItem != NULL) {
        *ppFirstItem = pContainer != NULL ? pSeparator.get() : NULL;
    }
    MenuItems Items(pContainer);
    if (pContainer != NULL) {
        Items.Append(std::move(pSeparator));
    }

    QTBIPdmNode_var spIPdmNode;
    QTB_CALL(GetPdmNode, &spIPdmNode, TRUE, NULL);
    QTB_ASSERT(spIPdmNode != NULL_var);
    unsigned char bIsNewestVersion = FALSE;
    if (FAILED(QTBInfoUtil::GetPdmVersionInfo(spIPdmNode, &bIsNewestVersion, NULL, NULL, NULL, NULL))) {
        // The name of the other class is meant.
        QTB_TRACE("QTBEContextualMenuOnRepNode::QTBEContextualMenuOnRepNode -> QTBInfoUtil::GetPdmVersionInfo -> "
                  "no version info");
    }
    QTBSchemaNode* pSchemaNode = NULL;
    QTB_CALL(spIPdmNode->GetSchemaNodePtr, &pSchemaNode);
    QTB_ASSERT(pSchemaNode != NULL);
    unsigned char bBndBoxesAreOffered = FALSE;
    QTB_CALL(BndBoxesAreOffered, &bBndBoxesAreOffered);
    const Conditions conditions{QTBIPdmObjNode_var(spIPdmNode) != NULL_var, bIsNewestVersion != FALSE,
                                bBndBoxesAreOffered != FALSE};

    for (const Action& action : ACTIONS) {
        if (!conditions.Allow(action.kind)) {
            continue;
        }
        if (action.kind == ActionKind::ExpandFamily) {
            if (const HRESULT hr = AddExpandMenus(spIPdmNode, *pSchemaNode, pContainer != NULL ? &Items : NULL);
                FAILED(hr)) {
                return hr;
            }
            continue;
        }
        if (pContainer != NULL &&
            (action.kind == ActionKind::BndBoxCommand || IsOfferedIn(*pSchemaNode, action.name, PDM_WINDOW))) {
            if (action.kind == ActionKind::Creation) {
                std::unique_ptr<CATCmdContainer> pMenu = MakeMenu(action.catalog, action.headerId);
                QTB_CALL(CreateCtxCreateSubMenuItem, spIPdmNode, pMenu.get());
                Items.AppendMenu(std::move(pMenu));
            } else if (*action.subMenuKey != '\0') {
                Items.AppendStarter(action.subMenuKey, action.headerId);
            }
        }
        if (*action.catalog != '\0' && IsOfferedIn(*pSchemaNode, action.name, QUERY_DIALOG)) {
            m_ContextMenuInfos.Append(QTBContextMenuInfo(QTB_CTX_MNU_INFO_COMMAND, action.name,
                                                         GetHeaderTitle(action.catalog, action.headerId),
                                                         action.command, TRUE));
        }
    }
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::OpenDocumentOfQueryResult()
{
    QTB_TRACE("QTBERepNodeOnRepNode::InitContextMenuInfo -> m_pFrmWindow == NULL -> called from query result list "
              "window");
    QTBIQtbFrmWindow_var spIQtbFrmWindow;
    if (FAILED(QTBDocUtil::CreateNewQtbDocument(&spIQtbFrmWindow, NULL))) {
        QTB_TRACE("QTBERepNodeOnRepNode::InitContextMenuInfo -> QTBDocUtil::CreateNewQtbDocument !");
        return QTB_SUCCESS;
    }
    CATFrmWindow* pFrmWindow = NULL;
    QTB_CALL(spIQtbFrmWindow->GetFrmWindowPtr, &pFrmWindow);
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::BndBoxesAreOffered(unsigned char* pbAreOffered)
{
    *pbAreOffered = FALSE;
    CATUnicodeString usBndBoxSupport;
    if (FAILED(QTBEnvVarUtil::GetOptionalEnvVarValue("QTB_BNDBOX_SUPPORT", &usBndBoxSupport)) ||
        !(usBndBoxSupport == "ON")) {
        return QTB_SUCCESS;
    }
    QTB_CALL(IsRepRootNode, pbAreOffered);
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::AddExpandMenus(const QTBIPdmNode_var& spIPdmNode, const QTBSchemaNode& SchemaNode,
                                             MenuItems* pItems)
{
    const char* place = m_pFrmWindow != NULL ? PDM_WINDOW : QUERY_DIALOG;
    const bool expandIsOffered = IsOfferedIn(SchemaNode, EXPAND_MENU.action, place);
    const bool multiExpandIsOffered = IsOfferedIn(SchemaNode, MULTI_EXPAND_MENU.action, place);
    const bool customExpandIsOffered = IsOfferedIn(SchemaNode, CUSTOM_EXPAND_MENU.action, place);
    if (!expandIsOffered && !multiExpandIsOffered && !customExpandIsOffered) {
        return QTB_SUCCESS;
    }
    std::unique_ptr<CATCmdContainer> pExpandMenu = EXPAND_MENU.Make();
    std::unique_ptr<CATCmdContainer> pMultiExpandMenu = MULTI_EXPAND_MENU.Make();
    std::unique_ptr<CATCmdContainer> pCustomExpandMenu = CUSTOM_EXPAND_MENU.Make();
    m_CurrentContextMenuInfo =
        QTBContextMenuInfo(QTB_CTX_MNU_INFO_COMMAND, EXPAND, pExpandMenu->GetTitle(), EXPAND_COMMAND, TRUE);
    QTB_CALL(CreateExpandSubMenuItems, spIPdmNode, pExpandMenu.get(), pMultiExpandMenu.get());
    QTB_CALL(CreateCustomExpandSubMenuItem, pCustomExpandMenu.get());
    if (pItems != NULL) {
        if (expandIsOffered) {
            pItems->AppendMenu(std::move(pExpandMenu));
        }
        if (multiExpandIsOffered) {
            pItems->AppendMenu(std::move(pMultiExpandMenu));
        }
        if (customExpandIsOffered) {
            pItems->AppendMenu(std::move(pCustomExpandMenu));
        }
    }
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::CreateExpandSubMenuItems(const QTBIPdmNode_var& spIPdmNode,
                                                       CATCmdContainer* pExpandContainer,
                                                       CATCmdContainer* pMultiExpandContainer)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::CreateExpandSubMenuItems");
    CATUnicodeString usClassName;
    QTB_CALL(spIPdmNode->GetClassName, &usClassName);
    QTBSchema* pSchema = NULL;
    QTB_CALL(QTBSchemaUtil::GetCurrentSchemaPtr, &pSchema);
    QTB_ASSERT(pSchema != NULL);
    MenuItems ExpandItems(pExpandContainer);
    MenuItems MultiExpandItems(pMultiExpandContainer);
    if (const HRESULT hr = AddExpandGroup<LeftEnd>(*pSchema, usClassName, &ExpandItems, &MultiExpandItems);
        FAILED(hr)) {
        return hr;
    }
    m_SecondContextMenuInfos.Append(
        QTBContextMenuInfo(QTB_CTX_MNU_INFO_SEPARATOR, "Sep1", "Sep1", EXPAND_COMMAND, TRUE));
    if (const HRESULT hr = AddExpandGroup<RightEnd>(*pSchema, usClassName, &ExpandItems, &MultiExpandItems);
        FAILED(hr)) {
        return hr;
    }
    return QTB_SUCCESS;
}

template <class End>
HRESULT QTBERepNodeOnRepNode::AddExpandGroup(const QTBSchema& Schema, const CATUnicodeString& usClassName,
                                             MenuItems* pExpandItems, MenuItems* pMultiExpandItems)
{
    const QTBSchema* pSchema = &Schema;
    // The second group is set off from the first.
    bool expandNeedsSeparator = !pExpandItems->IsEmpty();
    bool multiExpandNeedsSeparator = !pMultiExpandItems->IsEmpty();
    for (int i = 1; i <= pSchema->GetRelationCount(); ++i) {
        QTBSchemaRelation* pRelation = NULL;
        QTB_CALL(pSchema->GetRelationPtr, i, &pRelation);
        QTB_ASSERT(pRelation != NULL);
        const QTBSchemaRelationship* pRelationship = pRelation->GetRelationshipPtr(End::IS_LEFT);
        for (int j = 1; j <= End::GetCount(*pRelation); ++j) {
            CATUnicodeString usObjectName;
            QTB_RESULT_AS(End::GET_OBJECT_NAME, End::GetName(*pRelation, j, &usObjectName));
            if (!(usObjectName == usClassName) || pRelationship == NULL) {
                continue;
            }
            const CATUnicodeString usDisplayName = GetSchemaRelationshipDisplayName(pRelationship);
            if (pRelation->IsExpandOffered(End::IS_LEFT, TRUE)) {
                CreateExpandMenuItem(Schema, QTBExpDlgRelExpandInfo(pRelation, End::IS_LEFT, TRUE, TRUE), usDisplayName,
                                     multiExpandNeedsSeparator, pMultiExpandItems);
                multiExpandNeedsSeparator = false;
            }
            if (pRelation->IsExpandOffered(End::IS_LEFT, FALSE)) {
                CreateExpandMenuItem(Schema, QTBExpDlgRelExpandInfo(pRelation, End::IS_LEFT, FALSE, TRUE),
                                     usDisplayName, expandNeedsSeparator, pExpandItems);
                expandNeedsSeparator = false;
                m_SecondContextMenuInfos.Append(QTBContextMenuInfo(QTB_CTX_MNU_INFO_RELATION, pRelationship->GetName(),
                                                                   usDisplayName, EXPAND_COMMAND, TRUE));
            }
        }
    }
    return QTB_SUCCESS;
}

void QTBERepNodeOnRepNode::CreateExpandMenuItem(const QTBSchema& Schema, const QTBExpDlgRelExpandInfo& ExpandInfo,
                                                const CATUnicodeString& usTitle, bool separatorBefore,
                                                MenuItems* pItems)
{
    if (separatorBefore) {
        pItems->AppendSeparator();
    }
    pItems->AppendTextStarter(usTitle, QTBCommandText::MakeExpand(Schema, ExpandInfo));
}

HRESULT QTBERepNodeOnRepNode::CreateCustomExpandSubMenuItem(CATCmdContainer* pContainer)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::CreateCustomExpandSubMenuItem");
    QTBSchema* pSchema = NULL;
    QTB_CALL(QTBSchemaUtil::GetCurrentSchemaPtr, &pSchema);
    QTB_ASSERT(pSchema != NULL);
    CATUnicodeString usSystem;
    QTB_CALL(QTBSchemaUtil::GetSystem, &usSystem);
    CATUnicodeString usCustomization;
    QTB_CALL(QTBSchemaUtil::GetCustomization, &usCustomization);
    const QTBIRepNode_var spIRepNode(this);
    QTB_INTERFACE(spIRepNode);
    QTBIPdmNode_var spIPdmNode;
    QTB_CALL(spIRepNode->GetPdmNode, &spIPdmNode, TRUE, NULL);
    const QTBIPdmObjNode_var spIPdmObjNode(spIPdmNode);
    QTB_INTERFACE(spIPdmObjNode);
    QTBSchemaObject* pSchemaObject = NULL;
    QTB_CALL(spIPdmObjNode->GetSchemaObjectPtr, &pSchemaObject);
    QTB_ASSERT(pSchemaObject != NULL);
    MenuItems Items(pContainer);
    for (int i = 1; i <= pSchemaObject->GetCustomExpandPdmTreeCount(); ++i) {
        QTBPdmTree* pPdmTree = NULL;
        QTB_CALL(pSchemaObject->GetCustomExpandPdmTreePtr, i, &pPdmTree);
        QTB_CALL(CreateCustomExpandMenuItem, usSystem, usCustomization, pPdmTree, &Items);
    }
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::CreateCustomExpandMenuItem(const CATUnicodeString& usSystem,
                                                         const CATUnicodeString& usCustomization,
                                                         const QTBPdmTree* pPdmTree, MenuItems* pItems)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::CreateCustomExpandMenuItem");
    QTB_ASSERT(pPdmTree != NULL);
    const CATUnicodeString usNlsName = QTBSchemaUtil::GetCurrentSchemaNlsString(pPdmTree->GetNlsKey());
    pItems->AppendTextStarter(usNlsName.IsEmpty() ? pPdmTree->GetName() : usNlsName,
                              QTBCommandText::MakePdmTree(usSystem, usCustomization, *pPdmTree));
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::CreateCtxCreateSubMenuItem(const QTBIPdmNode_var& spIPdmNode, CATCmdContainer* pContainer)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::CreateCtxCreateSubMenuItem");
    const QTBINodeAttributes_var spINodeAttrs(spIPdmNode);
    QTB_INTERFACE(spINodeAttrs);
    CATUnicodeString usClassAttr;
    QTB_CALL(QTBSchemaUtil::GetClassAttr, &usClassAttr);
    QTBCommandText::Creation Creation;
    QTB_CALL(spINodeAttrs->GetStringAttributeValue, usClassAttr, &Creation.usOwnerClassName, FALSE, FALSE);
    QTB_CALL(spINodeAttrs->GetKey, &Creation.usOwnerKey);
    // The schema may know the object by its base class only.
    CATUnicodeString usClassName;
    QTB_CALL(spIPdmNode->GetClassName, &usClassName);
    QTB_CALL(QTBSchemaUtil::GetCurrentSchemaCatalogName, &Creation.usCatalogName);
    QTBSchema* pSchema = NULL;
    QTB_CALL(QTBSchemaUtil::GetCurrentSchemaPtr, &pSchema);
    QTB_ASSERT(pSchema != NULL);
    MenuItems Items(pContainer);
    for (int i = 1; i <= pSchema->GetRelationCount(); ++i) {
        QTBSchemaRelation* pRelation = NULL;
        QTB_CALL(pSchema->GetRelationPtr, i, &pRelation);
        QTB_ASSERT(pRelation != NULL);
        CATUnicodeString usRightClassName;
        QTB_CALL(pRelation->GetRightClassName, &usRightClassName);
        CATUnicodeString usLeftClassName;
        // The doubled letter in the text is meant.
        QTB_RESULT_AS("pRelation->GetLefttClassName", pRelation->GetLeftClassName(&usLeftClassName));
        if (!(pRelation->GetContextCreate() == "true")) {
            continue;
        }
        Creation.usRelationName = pRelation->GetName();
        for (const unsigned char bLeftToRight : {TRUE, FALSE}) {
            if (pRelation->StartsAtClass(bLeftToRight, usClassName)) {
                Creation.bLeftToRight = bLeftToRight;
                Creation.usClassName = bLeftToRight != FALSE ? usRightClassName : usLeftClassName;
                QTB_CALL(CreateCtxCreateMenuItem, *pSchema, *pRelation, Creation, &Items);
            }
        }
    }
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::CreateCtxCreateMenuItem(const QTBSchema& Schema, const QTBSchemaRelation& Relation,
                                                      const QTBCommandText::Creation& Creation, MenuItems* pItems)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::CreateCtxCreateMenuItem");
    CATUnicodeString usTitle;
    QTB_CALL(QTBSchemaUtil::GetNlsClassName, Schema.FindObject(Creation.usClassName), &usTitle);
    if (const QTBSchemaRelationship* pRelationship = Relation.GetRelationshipPtr(Creation.bLeftToRight);
        pRelationship != NULL) {
        usTitle = GetSchemaRelationshipDisplayName(pRelationship) + ": " + usTitle;
    }
    pItems->AppendTextStarter(usTitle, QTBCommandText::MakeCreation(Creation));
    return QTB_SUCCESS;
}

HRESULT QTBERepNodeOnRepNode::GetContextMenuInfo(CATListValQTBContextMenuInfo* pListOfContextMenuInfos,
                                                 QTBContextMenuInfo* pCurrentInfo,
                                                 CATListValQTBContextMenuInfo* pSecondList)
{
    QTB_SCOPE("QTBERepNodeOnRepNode::GetContextMenuInfo");
    QTB_CALL(InitContextMenuInfo, NULL, NULL);
    QTBIPdmNode_var spIPdmNode;
    QTB_CALL(GetPdmNode, &spIPdmNode, TRUE, NULL);
    unsigned char bIsCheckOutAllowed = FALSE;
    QTB_CALL(QTBInfoUtil::PdmObjectIsCheckOutAllowed, spIPdmNode, &bIsCheckOutAllowed);
    unsigned char bIsCheckInAllowed = FALSE;
    QTB_CALL(QTBInfoUtil::PdmObjectIsCheckInAllowed, spIPdmNode, &bIsCheckInAllowed);
    unsigned char bIsEditAllowed = FALSE;
    QTB_CALL(QTBInfoUtil::PdmObjectIsEditAllowed, spIPdmNode, &bIsEditAllowed);
    unsigned char bIsPromoteAllowed = FALSE;
    if (FAILED(spIPdmNode->GetQtbInfoAttr("QtbIsPromoteAllowed", &bIsPromoteAllowed, FALSE, NULL, FALSE))) {
        QTB_TRACE("QTBERepNodeOnRepNode::GetContextMenuInfo -> 'QtbIsPromoteAllowed' not found.");
        bIsPromoteAllowed = FALSE;
    }

    const struct
    {
        const char* action;
        unsigned char bIsAllowed;
    } Rights[] = {{CHECK_OUT, bIsCheckOutAllowed},
                  {CHECK_IN, bIsCheckInAllowed},
                  {UPDATE_ITEM, bIsEditAllowed},
                  {PROMOTE, bIsPromoteAllowed}};
    for (int i = 1; i <= m_ContextMenuInfos.Size(); ++i) {
        for (const auto& [action, bIsAllowed] : Rights) {
            if (m_ContextMenuInfos[i].GetActionName() == action) {
                QTBContextMenuInfo ContextMenuInfo = m_ContextMenuInfos[i];
                ContextMenuInfo.SetEnabled(bIsAllowed);
                m_ContextMenuInfos.Replace(i, ContextMenuInfo);
            }
        }
    }
    if (pListOfContextMenuInfos != NULL) {
        *pListOfContextMenuInfos = m_ContextMenuInfos;
    }
    if (pCurrentInfo != NULL) {
        *pCurrentInfo = m_CurrentContextMenuInfo;
    }
    if (pSecondList != NULL) {
        *pSecondList = m_SecondContextMenuInfos;
    }
    return QTB_SUCCESS;
}
