#include "QTBEPdmNodeOnPdmNode.h"

#include "CATFrmEditor.h"
#include "CATHSO.h"
#include "CATMsgCatalog.h"
#include "CATPSO.h"
#include "QTBCheck.h"
#include "QTBGlobVarsUtil.h"
#include "QTBINodeAttributes.h"
#include "QTBINodeRelations.h"
#include "QTBIPdmNode.h"
#include "QTBIPdmNodeCont.h"
#include "QTBIPdmObjNode.h"
#include "QTBIPdmRelNode.h"
#include "QTBIRepNode.h"
#include "QTBIRepNodeCont.h"
#include "QTBInfoUtil.h"
#include "QTBMessageUtil.h"
#include "QTBNameValueListAttr.h"
#include "QTBReservedNames.h"
#include "QTBSchemaAttributeRep.h"
#include "QTBSchemaDescription.h"
#include "QTBSchemaNode.h"
#include "QTBSchemaUtil.h"
#include "QTBStringHash.h"
#include "QTBStringUtil.h"
#include "QTBTraceUtil.h"

namespace {

// Preselecting and highlighting rep nodes differ in the editor's set, in what is asked of each rep node and in texts.
struct Preselection
{
    static constexpr const char* SET_EXISTS = "pPSO != NULL";
    static constexpr const char* SHOW = "spIRepNode->Preselect";

    static auto* GetSet(CATFrmEditor* pFrmEditor) { return pFrmEditor->GetPSO(); }

    HRESULT Show(const QTBIRepNode_var& spIRepNode) const
    {
        unsigned char bEmptyPSO = FALSE;
        return spIRepNode->Preselect(&bEmptyPSO);
    }
};

struct Highlighting
{
    static constexpr const char* SET_EXISTS = "pHSO != NULL";
    static constexpr const char* SHOW = "spIRepNode->Highlight";

    static auto* GetSet(CATFrmEditor* pFrmEditor) { return pFrmEditor->GetHSO(); }

    HRESULT Show(const QTBIRepNode_var& spIRepNode) const
    {
        unsigned char bEmptyHSO = FALSE;
        return spIRepNode->Highlight(&bEmptyHSO, m_pbHighlightObjectOfRelation);
    }

    unsigned char* m_pbHighlightObjectOfRelation;
};

// Empties the set of every window that shows one of the rep nodes.
template <class Kind>
HRESULT EmptyEditorSets(const CATListValCATBaseUnknown_var& RepNodes)
{
    for (const CATBaseUnknown_var& spRepNode : RepNodes) {
        const QTBIRepNode_var spIRepNode(spRepNode);
        QTB_INTERFACE(spIRepNode);
        unsigned char bFrmWindowPtrExists = FALSE;
        QTB_CALL(spIRepNode->FrmWindowPtrExists, &bFrmWindowPtrExists);
        if (bFrmWindowPtrExists == FALSE) {
            continue;
        }
        CATFrmEditor* pFrmEditor = NULL;
        QTB_CALL(spIRepNode->GetFrmEditorPtr, &pFrmEditor);
        // A window without editor has no set.
        auto* pSet = pFrmEditor != NULL ? Kind::GetSet(pFrmEditor) : NULL;
        QTB_ASSERT_AS(Kind::SET_EXISTS, pSet != NULL);
        if (pSet->GetSize() > 0) {
            pSet->Empty();
        }
    }
    return QTB_SUCCESS;
}

template <class Kind>
HRESULT ShowRepNodes(const CATListValCATBaseUnknown_var& RepNodes, const Kind& kind)
{
    for (const CATBaseUnknown_var& spRepNode : RepNodes) {
        const QTBIRepNode_var spIRepNode(spRepNode);
        QTB_INTERFACE(spIRepNode);
        QTB_RESULT_AS(Kind::SHOW, kind.Show(spIRepNode));
    }
    return QTB_SUCCESS;
}

// The three spellings of a flag in a PDM record.
bool IsTrueText(const CATUnicodeString& usText)
{
    return usText == "true" || usText == "True" || usText == "TRUE";
}

bool IsFalseText(const CATUnicodeString& usText)
{
    return usText == "false" || usText == "False" || usText == "FALSE";
}

// The value of one description attribute, empty when it cannot be read.
CATUnicodeString ReadDescriptionValue(QTBSchemaAttributeRep& descAttr, const QTBIPdmNode_var& spIPdmNode,
                                      const QTBINodeAttributes_var& spINodeAttributes)
{
    CATUnicodeString usValue;
    const HRESULT hr =
        descAttr.GetEmbeddedObjAttr().IsEmpty()
            ? spINodeAttributes->GetStringAttributeValue(descAttr.GetName(), &usValue, TRUE, TRUE)
            : QTBSchemaUtil::GetEmbeddedDescriptionAttributeValue(spIPdmNode, descAttr.GetName(), &usValue);
    return SUCCEEDED(hr) ? usValue : CATUnicodeString();
}

void AppendListItem(const CATUnicodeString& usItem, CATUnicodeString* pusList)
{
    if (!usItem.IsEmpty()) {
        if (!pusList->IsEmpty()) {
            *pusList += ", ";
        }
        *pusList += usItem;
    }
}

// The state of an object, in parentheses, when there is something to say.
HRESULT AppendStatus(const QTBIPdmNode_var& spIPdmNode, CATUnicodeString* pusDescription)
{
    CATUnicodeString usStatus;

    // The node's own version is deliberately not shown, only a newer one.
    unsigned char bIsNewest = FALSE;
    unsigned char bHasSubVersion = FALSE;
    CATUnicodeString usVersion;
    CATUnicodeString usNewestVersion;
    CATUnicodeString usSubVersion;
    if (SUCCEEDED(QTBInfoUtil::GetPdmVersionInfo(spIPdmNode, &bIsNewest, &bHasSubVersion, &usVersion, &usNewestVersion,
                                                 &usSubVersion)) &&
        bIsNewest == FALSE) {
        AppendListItem(CATMsgCatalog::BuildMessage("QTBUserMessages", "NewestVersion") + ":" + usNewestVersion,
                       &usStatus);
    }

    unsigned char bEditIsAllowed = FALSE;
    QTB_CALL(QTBInfoUtil::PdmObjectIsEditAllowed, spIPdmNode, &bEditIsAllowed);
    if (bEditIsAllowed == FALSE) {
        unsigned char bCheckOutIsAllowed = FALSE;
        CATUnicodeString usUser;
        if (FAILED(QTBInfoUtil::PdmObjectIsCheckOutAllowed(spIPdmNode, &bCheckOutIsAllowed, &usUser))) {
            QTB_TRACE("QTBEPdmNodeOnPdmNode::GetDescriptionString -> QTBInfoUtil::PdmObjectIsCheckOutAllowed !");
        }
        if (bCheckOutIsAllowed == FALSE && !usUser.IsEmpty()) {
            CATError* pError = QTBMessageUtil::ObjectIsCheckedOutByUser(usUser);
            if (pError != NULL) {
                AppendListItem(pError->GetNLSMessage(), &usStatus);
                pError->Release();
            }
        }
    }

    // Asked for its failure only: a document without file is deliberately not marked.
    unsigned char bHasFile = FALSE;
    QTB_CALL(QTBInfoUtil::PdmDocumentHasFile, spIPdmNode, &bHasFile);

    if (!usStatus.IsEmpty()) {
        *pusDescription += " (" + usStatus + ")";
    }
    return QTB_SUCCESS;
}

} // namespace

QTBEPdmNodeOnPdmNode::QTBEPdmNodeOnPdmNode() : m_pSchemaNode(NULL), m_uiPdmKeyHash(0) {}

QTBEPdmNodeOnPdmNode::~QTBEPdmNodeOnPdmNode() = default;

HRESULT QTBEPdmNodeOnPdmNode::GetRepNodes(CATListValCATBaseUnknown_var* pListOfRepNodes,
                                          const QTBIRepNodeCont_var& spIRepNodeCont)
{
    QTB_SCOPE("QTBEPdmNodeOnPdmNode::GetRepNodes");
    QTB_ASSERT(pListOfRepNodes != NULL);
    pListOfRepNodes->RemoveAll();
    const QTBINodeRelations_var spINodeRelationsOnThis(this);
    QTB_INTERFACE(spINodeRelationsOnThis);

    if (spIRepNodeCont == NULL_var) {
        QTB_CALL(spINodeRelationsOnThis->GetRightNodeList, QTBReservedNames::PDM_TO_REP, pListOfRepNodes,
                 MOST_RECENTLY_UPDATED_NODES);
        return QTB_SUCCESS;
    }

    CATListValCATBaseUnknown_var AllRepNodes;
    QTB_CALL(spINodeRelationsOnThis->GetRightNodeList, QTBReservedNames::PDM_TO_REP, &AllRepNodes,
             MOST_RECENTLY_UPDATED_NODES);
    for (const CATBaseUnknown_var& spRepNode : AllRepNodes) {
        const QTBIRepNode_var spIRepNode(spRepNode);
        QTB_INTERFACE(spIRepNode);
        QTBIRepNodeCont_var spIRepNodeContOfRepNode;
        QTB_CALL(spIRepNode->GetRepNodeContainer, &spIRepNodeContOfRepNode);
        if (spIRepNodeContOfRepNode == spIRepNodeCont) {
            pListOfRepNodes->Append(spRepNode);
        }
    }
    return QTB_SUCCESS;
}

HRESULT QTBEPdmNodeOnPdmNode::RedrawRepNodes(unsigned char* pbRecursive)
{
    QTB_SCOPE("QTBEPdmNodeOnPdmNode::RedrawRepNodes");
    CATListValCATBaseUnknown_var RepNodes;
    QTB_CALL(GetRepNodes, &RepNodes, NULL_var);
    for (const CATBaseUnknown_var& spRepNode : RepNodes) {
        const QTBIRepNode_var spIRepNode(spRepNode);
        QTB_INTERFACE(spIRepNode);
        QTB_CALL(spIRepNode->Redraw, pbRecursive);
    }
    return QTB_SUCCESS;
}

HRESULT QTBEPdmNodeOnPdmNode::PreselectRepNodes()
{
    QTB_SCOPE("QTBEPdmNodeOnPdmNode::PreselectRepNodes");
    CATListValCATBaseUnknown_var RepNodes;
    QTB_CALL(GetRepNodes, &RepNodes, NULL_var);
    const HRESULT hr = EmptyEditorSets<Preselection>(RepNodes);
    return FAILED(hr) ? hr : ShowRepNodes(RepNodes, Preselection{});
}

HRESULT QTBEPdmNodeOnPdmNode::HighlightRepNodes(const unsigned char& bEmptyHighlightFirst,
                                                unsigned char* pbHighlightObjectOfRelation)
{
    QTB_SCOPE("QTBEPdmNodeOnPdmNode::HighlightRepNodes");
    CATListValCATBaseUnknown_var RepNodes;
    QTB_CALL(GetRepNodes, &RepNodes, NULL_var);
    const HRESULT hr = bEmptyHighlightFirst != FALSE ? EmptyEditorSets<Highlighting>(RepNodes) : S_OK;
    return FAILED(hr) ? hr : ShowRepNodes(RepNodes, Highlighting{pbHighlightObjectOfRelation});
}

HRESULT QTBEPdmNodeOnPdmNode::GetClassName(CATUnicodeString* pusClassName)
{
    QTB_SCOPE("QTBEPdmNodeOnPdmNode::GetClassName");
    QTB_ASSERT(pusClassName != NULL);
    const QTBINodeAttributes_var spINodeAttributesOnThis(this);
    QTB_INTERFACE(spINodeAttributesOnThis);
    CATUnicodeString usKey;
    QTB_CALL(spINodeAttributesOnThis->GetKey, &usKey);
    if (usKey == QTBReservedNames::DEFAULT_ROOT_NODE) {
        *pusClassName = usKey;
        return QTB_SUCCESS;
    }

    const QTBIPdmObjNode_var spIPdmObjNodeOnThis(this);
    const QTBIPdmRelNode_var spIPdmRelNodeOnThis(this);
    QTB_ASSERT((spIPdmObjNodeOnThis != NULL_var) || (spIPdmRelNodeOnThis != NULL_var));
    if (spIPdmObjNodeOnThis != NULL_var) {
        QTB_CALL(spIPdmObjNodeOnThis->GetClassAttr, pusClassName, NULL);
    }
    if (spIPdmRelNodeOnThis != NULL_var) {
        QTB_CALL(spIPdmRelNodeOnThis->GetRelationAttr, pusClassName, NULL);
    }
    return QTB_SUCCESS;
}

HRESULT QTBEPdmNodeOnPdmNode::GetDescriptionString(CATUnicodeString* pusDescriptionString)
{
    QTB_SCOPE("QTBEPdmNodeOnPdmNode::GetDescriptionString");
    QTB_ASSERT(pusDescriptionString != NULL);
    CATUnicodeString usDescription;

    QTBSchemaNode* pSchemaNode = NULL;
    if (FAILED(GetSchemaNodePtr(&pSchemaNode)) || pSchemaNode == NULL) {
        if (FAILED(GetClassName(&usDescription))) {
            const QTBINodeAttributes_var spINodeAttributesOnThis(this);
            QTB_INTERFACE(spINodeAttributesOnThis);
            QTB_CALL(spINodeAttributesOnThis->GetKey, &usDescription);
        }
        *pusDescriptionString = usDescription;
        return QTB_SUCCESS;
    }

    QTBSchemaDescription* pDescription = pSchemaNode->GetDescriptionPtr();
    if (pDescription == NULL) {
        QTB_CALL(QTBSchemaUtil::GetNlsClassName, pSchemaNode, &usDescription);
        *pusDescriptionString = usDescription;
        return QTB_SUCCESS;
    }

    const QTBIPdmNode_var spIPdmNodeOnThis(this);
    QTB_INTERFACE(spIPdmNodeOnThis);
    if (const HRESULT hr = AppendDescriptionAttributes(spIPdmNodeOnThis, pDescription, &usDescription); FAILED(hr)) {
        return hr;
    }
    if (usDescription.IsEmpty()) {
        QTB_CALL(QTBSchemaUtil::GetNlsClassName, pSchemaNode, &usDescription);
    }
    const QTBIPdmObjNode_var spIPdmObjNodeOnThis(this);
    if (spIPdmObjNodeOnThis != NULL_var) {
        if (const HRESULT hr = AppendStatus(spIPdmNodeOnThis, &usDescription); FAILED(hr)) {
            return hr;
        }
    }
    *pusDescriptionString = usDescription;
    return QTB_SUCCESS;
}

HRESULT QTBEPdmNodeOnPdmNode::AppendDescriptionAttributes(const QTBIPdmNode_var& spIPdmNodeOnThis,
                                                          QTBSchemaDescription* pDescription,
                                                          CATUnicodeString* pusDescription)
{
    const int iDescAttrCount = pDescription->GetDescAttrCount();
    for (int i = 1; i <= iDescAttrCount; ++i) {
        QTBSchemaAttributeRep* pDescAttr = NULL;
        QTB_CALL(pDescription->GetDescAttrPtr, i, &pDescAttr);
        QTB_ASSERT(pDescAttr != NULL);
        const QTBINodeAttributes_var spINodeAttributes(this);
        QTB_INTERFACE(spINodeAttributes);
        CATUnicodeString usValue = ReadDescriptionValue(*pDescAttr, spIPdmNodeOnThis, spINodeAttributes);

        int iMaxDescAttrLength = -1;
        QTB_CALL(QTBSchemaUtil::MaxDescAttrLength, &iMaxDescAttrLength);
        if (iMaxDescAttrLength > 0 && usValue.GetLengthInChar() > iMaxDescAttrLength) {
            usValue = usValue.SubString(0, iMaxDescAttrLength) + "...";
        }
        // An empty value keeps its separator.
        *pusDescription += usValue;
        if (i < iDescAttrCount) {
            *pusDescription += ", ";
        }
    }
    return QTB_SUCCESS;
}

HRESULT QTBEPdmNodeOnPdmNode::GetQtbAttr(const CATUnicodeString&, unsigned char* pbAttrValue, const unsigned char&,
                                         unsigned char*, const unsigned char&)
{
    QTB_SCOPE("QTBEPdmNodeOnPdmNode::GetQtbAttr");
    QTB_ASSERT(pbAttrValue != NULL);
    return QTB_QUIET_FAILURE;
}

HRESULT QTBEPdmNodeOnPdmNode::GetQtbAttr(const CATUnicodeString&, CATListValCATUnicodeString* pAttrValues,
                                         const unsigned char&, unsigned char*, const unsigned char&)
{
    QTB_SCOPE("QTBEPdmNodeOnPdmNode::GetQtbAttr");
    QTB_ASSERT(pAttrValues != NULL);
    return QTB_QUIET_FAILURE;
}

HRESULT QTBEPdmNodeOnPdmNode::GetQtbAttr(const CATUnicodeString&, CATUnicodeString* pusAttrValue, const unsigned char&,
                                         unsigned char*, const unsigned char&)
{
    QTB_SCOPE("QTBEPdmNodeOnPdmNode::GetQtbAttr");
    QTB_ASSERT(pusAttrValue != NULL);
    return QTB_QUIET_FAILURE;
}

HRESULT QTBEPdmNodeOnPdmNode::SetQtbInfoAttr(const CATUnicodeString& usAttrName, const CATUnicodeString& usAttrValue)
{
    QTB_SCOPE("QTBEPdmNodeOnPdmNode::SetQtbInfoAttr");
    QTB_ASSERT(usAttrName != "");
    QTBNameValueListAttr* pNameValueListAttr = NULL;
    if (const HRESULT hr = GetQtbInfo(&pNameValueListAttr); FAILED(hr)) {
        return hr;
    }
    // The text is the getter's, and is meant.
    QTB_RESULT_AS("pNameValueListAttr->GetNvValue", pNameValueListAttr->SetNvValue(usAttrName, usAttrValue));
    return QTB_SUCCESS;
}

HRESULT QTBEPdmNodeOnPdmNode::GetQtbInfoAttr(const CATUnicodeString& usAttrName, unsigned char* pbAttrValue,
                                             const unsigned char& bPrintErrorIfUndefined,
                                             unsigned char* pbAttrIsDefined, const unsigned char& bEmptyValueCounts)
{
    QTB_SCOPE("QTBEPdmNodeOnPdmNode::GetQtbInfoAttr");
    QTB_ASSERT(pbAttrValue != NULL);
    CATUnicodeString usAttrValue;
    QTB_CALL(GetQtbInfoAttr, usAttrName, &usAttrValue, bPrintErrorIfUndefined, pbAttrIsDefined, bEmptyValueCounts);
    const bool bIsTrue = IsTrueText(usAttrValue);
    if (!bIsTrue && !IsFalseText(usAttrValue)) {
        QTB_TRACE("QTBEPdmNodeOnPdmNode::GetQtbInfoAttr -> expected boolean value (\"true\" or \"false\", for \""
                  << usAttrName << "\" got \"" << usAttrValue);
        return QTB_QUIET_FAILURE;
    }
    *pbAttrValue = bIsTrue ? TRUE : FALSE;
    return QTB_SUCCESS;
}

HRESULT QTBEPdmNodeOnPdmNode::GetQtbInfoAttr(const CATUnicodeString& usAttrName,
                                             CATListValCATUnicodeString* pAttrValues,
                                             const unsigned char& bPrintErrorIfUndefined,
                                             unsigned char* pbAttrIsDefined, const unsigned char& bEmptyValueCounts)
{
    QTB_SCOPE("QTBEPdmNodeOnPdmNode::GetQtbInfoAttr");
    QTB_ASSERT(pAttrValues != NULL);
    pAttrValues->RemoveAll();
    CATUnicodeString usAttrValue;
    QTB_CALL(GetQtbInfoAttr, usAttrName, &usAttrValue, bPrintErrorIfUndefined, pbAttrIsDefined, bEmptyValueCounts);
    QTB_CALL(QTBStringUtil::ConvertQtbInfoListAttrString, usAttrValue, pAttrValues);
    return QTB_SUCCESS;
}

HRESULT QTBEPdmNodeOnPdmNode::GetQtbInfoAttr(const CATUnicodeString& usAttrName, CATUnicodeString* pusAttrValue,
                                             const unsigned char& bPrintErrorIfUndefined,
                                             unsigned char* pbAttrIsDefined, const unsigned char& bEmptyValueCounts)
{
    QTB_SCOPE("QTBEPdmNodeOnPdmNode::GetQtbInfoAttr");
    QTB_ASSERT(usAttrName != "");
    QTBNameValueListAttr* pNameValueListAttr = NULL;
    if (const HRESULT hr = GetQtbInfo(&pNameValueListAttr); FAILED(hr)) {
        return hr;
    }
    CATUnicodeString usValue;
    const bool bFound = SUCCEEDED(pNameValueListAttr->GetNvValue(usAttrName, &usValue)) &&
                        (bEmptyValueCounts != FALSE || !usValue.IsEmpty());
    if (!bFound && pbAttrIsDefined == NULL) {
        if (bPrintErrorIfUndefined != FALSE) {
            QTB_CALL(PrintAttributeDoesNotExistError, usAttrName);
        }
        return QTB_QUIET_FAILURE;
    }
    if (pusAttrValue != NULL) {
        *pusAttrValue = usValue;
    }
    if (pbAttrIsDefined != NULL) {
        *pbAttrIsDefined = bFound ? TRUE : FALSE;
    }
    return QTB_SUCCESS;
}

HRESULT QTBEPdmNodeOnPdmNode::GetQtbInfoAttrXmlAttrVal(const CATUnicodeString& usInfoAttrName,
                                                       const CATUnicodeString& usXmlAttrName,
                                                       CATUnicodeString* pusXmlAttrValue)
{
    QTB_SCOPE("QTBEPdmNodeOnPdmNode::GetQtbInfoAttrXmlAttrVal");
    QTB_ASSERT(pusXmlAttrValue != NULL);
    QTBNameValueListAttr* pNameValueListAttr = NULL;
    if (const HRESULT hr = GetQtbInfo(&pNameValueListAttr); FAILED(hr)) {
        return hr;
    }
    unsigned char bNvValueIsDefined = FALSE;
    // NOLINTNEXTLINE(clang-analyzer-core.CallAndMessage): GetQtbInfo gives the list whenever it succeeds.
    QTB_CALL(pNameValueListAttr->NvValueIsDefined, usInfoAttrName, &bNvValueIsDefined);
    if (bNvValueIsDefined == FALSE) {
        return QTB_QUIET_FAILURE;
    }
    if (FAILED(pNameValueListAttr->GetNvEntryXmlAttrVal(usInfoAttrName, usXmlAttrName, pusXmlAttrValue))) {
        *pusXmlAttrValue = "";
    }
    return QTB_SUCCESS;
}

HRESULT QTBEPdmNodeOnPdmNode::GetQtbInfo(QTBNameValueListAttr** ppNameValueListAttr)
{
    const QTBINodeAttributes_var spINodeAttributesOnThis(this);
    QTB_INTERFACE(spINodeAttributesOnThis);
    QTB_CALL(spINodeAttributesOnThis->GetNameValueListAttributePtr, QTBReservedNames::QTB_INFO, ppNameValueListAttr);
    return QTB_SUCCESS;
}

HRESULT QTBEPdmNodeOnPdmNode::SetSchemaNodePtr(QTBSchemaNode* pSchemaNode)
{
    QTB_SCOPE("QTBEPdmNodeOnPdmNode::SetSchemaNodePtr");
    QTB_ASSERT(pSchemaNode != NULL);
    m_pSchemaNode = pSchemaNode;
    return QTB_SUCCESS;
}

HRESULT QTBEPdmNodeOnPdmNode::GetSchemaNodePtr(QTBSchemaNode** ppSchemaNode)
{
    QTB_SCOPE("QTBEPdmNodeOnPdmNode::GetSchemaNodePtr");
    QTB_ASSERT(ppSchemaNode != NULL);
    const QTBINodeAttributes_var spINodeAttributesOnThis(this);
    QTB_INTERFACE(spINodeAttributesOnThis);
    CATUnicodeString usKey;
    QTB_CALL(spINodeAttributesOnThis->GetKey, &usKey);
    if (m_pSchemaNode == NULL && usKey != QTBReservedNames::DEFAULT_ROOT_NODE) {
        CATUnicodeString usClassName;
        QTB_CALL(GetClassName, &usClassName);
        QTB_TRACE("QTBEPdmNodeOnPdmNode::GetSchemaNodePtr Class:[" << usClassName << "], Key:[" << usKey
                                                                   << "] -> m_pSchemaNode == NULL");
        QTB_ASSERT(m_pSchemaNode != NULL);
    }
    *ppSchemaNode = m_pSchemaNode;
    return QTB_SUCCESS;
}

HRESULT QTBEPdmNodeOnPdmNode::SetPdmNodeContainer(const QTBIPdmNodeCont_var& spIPdmNodeCont)
{
    QTB_SCOPE("QTBEPdmNodeOnPdmNode::SetPdmNodeContainer");
    QTB_INTERFACE(spIPdmNodeCont);
    m_spIPdmNodeCont = spIPdmNodeCont;
    return QTB_SUCCESS;
}

HRESULT QTBEPdmNodeOnPdmNode::GetPdmNodeContainer(QTBIPdmNodeCont_var* pspIPdmNodeCont)
{
    QTB_SCOPE("QTBEPdmNodeOnPdmNode::GetPdmNodeContainer");
    QTB_ASSERT(pspIPdmNodeCont != NULL);
    QTB_INTERFACE(m_spIPdmNodeCont);
    *pspIPdmNodeCont = m_spIPdmNodeCont;
    return QTB_SUCCESS;
}

HRESULT QTBEPdmNodeOnPdmNode::IsAffectedByCurrentAction(unsigned char* pbIsAffected)
{
    QTB_SCOPE("QTBEPdmNodeOnPdmNode::IsAffectedByCurrentAction");
    QTB_ASSERT(pbIsAffected != NULL);
    int iCurrentActionIndex = 0;
    QTB_CALL(QTBGlobVarsUtil::GetCurrentActionIndex, &iCurrentActionIndex);
    const QTBIPdmNode_var spIPdmNodeOnThis(this);
    QTB_INTERFACE(spIPdmNodeOnThis);
    int iActionIndex = 0;
    QTB_CALL(QTBInfoUtil::GetActionIndex, spIPdmNodeOnThis, &iActionIndex);
    *pbIsAffected = iActionIndex == iCurrentActionIndex ? TRUE : FALSE;
    return QTB_SUCCESS;
}

HRESULT QTBEPdmNodeOnPdmNode::SetPdmKey()
{
    QTB_SCOPE("QTBEPdmNodeOnPdmNode::SetPdmKey");
    CATUnicodeString usKeyAttrName;
    QTB_CALL(QTBSchemaUtil::GetKeyAttr, &usKeyAttrName);
    const QTBINodeAttributes_var spINodeAttributesOnThis(this);
    QTB_INTERFACE(spINodeAttributesOnThis);
    CATUnicodeString usPdmKey;
    QTB_CALL(spINodeAttributesOnThis->GetStringAttributeValue, usKeyAttrName, &usPdmKey, FALSE, TRUE);
    m_usPdmKey = usPdmKey;
    // Goes on from the hash that is there: 0 on the one call that a node gets.
    m_uiPdmKeyHash %= m_usPdmKey;
    return S_OK;
}

HRESULT QTBEPdmNodeOnPdmNode::GetIdentifyingAttributes(CATListValCATUnicodeString* pAttrList)
{
    QTB_SCOPE("QTBEPdmNodeOnPdmNode::GetIdentifyingAttributes");
    QTB_ASSERT(pAttrList != NULL);
    pAttrList->RemoveAll();
    CATUnicodeString usClassAttrName;
    QTB_CALL(QTBSchemaUtil::GetClassAttr, &usClassAttrName);
    pAttrList->Append(usClassAttrName);
    CATUnicodeString usKeyAttrName;
    QTB_CALL(QTBSchemaUtil::GetKeyAttr, &usKeyAttrName);
    pAttrList->Append(usKeyAttrName);
    const QTBIPdmRelNode_var spIPdmRelNodeOnThis(this);
    if (spIPdmRelNodeOnThis != NULL_var) {
        for (const char* name : {"Left", "Right", "Class1", "Class2"}) {
            pAttrList->Append(name);
        }
    }
    return QTB_SUCCESS;
}

HRESULT QTBEPdmNodeOnPdmNode::PrintAttributeDoesNotExistError(const CATUnicodeString& usAttrName)
{
    QTB_SCOPE("QTBEPdmNodeOnPdmNode::PrintAttributeDoesNotExistError");
    const QTBINodeAttributes_var spINodeAttributesOnThis(this);
    QTB_INTERFACE(spINodeAttributesOnThis);
    CATUnicodeString usKey;
    QTB_CALL(spINodeAttributesOnThis->GetKey, &usKey);
    QTB_TRACE("QTBEPdmNodeOnPdmNode::PrintAttributeDoesNotExistError -> QTB Info attribute '"
              << usAttrName << "' not found on node '" << usKey);
    const QTBIPdmNode_var spIPdmNodeOnThis(this);
    QTB_INTERFACE(spIPdmNodeOnThis);
    if (FAILED(QTBTraceUtil::PrintQtbAttributes(spIPdmNodeOnThis, 0))) {
        QTB_TRACE("QTBEPdmNodeOnPdmNode::PrintAttributeDoesNotExistError -> QTBTraceUtil::PrintQtbAttributes !");
    }
    return QTB_SUCCESS;
}

HRESULT QTBEPdmNodeOnPdmNode::ToXml(CATUnicodeString* pusPdmObjectXmlString, const CATUnicodeString& usAdditionalXml,
                                    const CATUnicodeString& usTagAttributes, const CATUnicodeString& usXmlType)
{
    QTB_SCOPE("QTBEPdmNodeOnPdmNode::ToXml");
    QTB_ASSERT(pusPdmObjectXmlString != NULL);
    CATListValCATUnicodeString AttributeNames;
    QTB_CALL(GetIdentifyingAttributes, &AttributeNames);
    const QTBINodeAttributes_var spINodeAttributesOnThis(this);
    QTB_INTERFACE(spINodeAttributesOnThis);
    QTB_CALL(spINodeAttributesOnThis->ToXmlString, AttributeNames, pusPdmObjectXmlString, usAdditionalXml,
             usTagAttributes, usXmlType);
    return QTB_SUCCESS;
}
