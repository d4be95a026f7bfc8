#include "QTBEPdmNodeContOnPdmNodeCont.h"

#include "CATInstantiateComponent.h"
#include "QTBCheck.h"
#include "QTBConstants.h"
#include "QTBINodeAttributes.h"
#include "QTBIPdmNodeCont.h"
#include "QTBIPdmObjNode.h"
#include "QTBPdmGraphUtil.h"
#include "QTBPdmSessionUtil.h"
#include "QTBReservedNames.h"
#include "QTBSchemaUtil.h"

QTBEPdmNodeContOnPdmNodeCont::QTBEPdmNodeContOnPdmNodeCont() : m_pSchema(NULL), m_bDefaultRootNodeExists(FALSE)
{
    if (FAILED(QTBSchemaUtil::GetCurrentSchemaPtr(&m_pSchema))) {
        QTB_TRACE("QTBSchemaUtil::GetCurrentSchemaPtr FAILED");
    }
}

QTBEPdmNodeContOnPdmNodeCont::~QTBEPdmNodeContOnPdmNodeCont() = default;

HRESULT QTBEPdmNodeContOnPdmNodeCont::CreatePdmObjNode(const CATUnicodeString& usKey,
                                                       CATBaseUnknown_var* pspBaseUnknownOnNewNode,
                                                       const unsigned char& bAddToContainer)
{
    QTB_SCOPE("QTBEPdmNodeContOnPdmNodeCont::CreatePdmObjNode");
    return CreateNode("QTBPdmObjNode", usKey, pspBaseUnknownOnNewNode, bAddToContainer);
}

HRESULT QTBEPdmNodeContOnPdmNodeCont::CreatePdmRelNode(const CATUnicodeString& usKey,
                                                       CATBaseUnknown_var* pspBaseUnknownOnNewNode,
                                                       const unsigned char& bAddToContainer)
{
    QTB_SCOPE("QTBEPdmNodeContOnPdmNodeCont::CreatePdmRelNode");
    return CreateNode("QTBPdmRelNode", usKey, pspBaseUnknownOnNewNode, bAddToContainer);
}

HRESULT QTBEPdmNodeContOnPdmNodeCont::CreateNode(const char* lateType, const CATUnicodeString& usKey,
                                                 CATBaseUnknown_var* pspBaseUnknownOnNewNode,
                                                 const unsigned char& bAddToContainer)
{
    QTB_ASSERT(pspBaseUnknownOnNewNode != NULL);
    void* pNewNode = NULL;
    QTB_CALL(::CATInstantiateComponent, lateType, CLSID_CATBaseUnknown, &pNewNode);
    const CATBaseUnknown_var spNewNode = CATBaseUnknown_var::Adopt(static_cast<CATBaseUnknown*>(pNewNode));

    const QTBINodeAttributes_var spINodeAttributesOnNode(spNewNode);
    QTB_INTERFACE(spINodeAttributesOnNode);
    QTB_CALL(spINodeAttributesOnNode->SetKey, usKey);

    const QTBIPdmNodeCont_var spIPdmNodeContOnThis(this);
    QTB_INTERFACE(spIPdmNodeContOnThis);
    const QTBIPdmNode_var spIPdmNodeOnNewNode(spNewNode);
    QTB_INTERFACE(spIPdmNodeOnNewNode);
    QTB_CALL(spIPdmNodeOnNewNode->SetPdmNodeContainer, spIPdmNodeContOnThis);

    *pspBaseUnknownOnNewNode = spNewNode;
    QTB_INTERFACE(*pspBaseUnknownOnNewNode);
    if (bAddToContainer != FALSE) {
        FileNode(*pspBaseUnknownOnNewNode);
    }
    return QTB_SUCCESS;
}

HRESULT QTBEPdmNodeContOnPdmNodeCont::CreateDefaultRootNode()
{
    QTB_SCOPE("QTBEPdmNodeContOnPdmNodeCont::CreateDefaultRootNode");
    CATBaseUnknown_var spBaseUnknownOnDefaultRootNode;
    QTB_CALL(CreatePdmObjNode, QTBReservedNames::DEFAULT_ROOT_NODE, &spBaseUnknownOnDefaultRootNode, TRUE);
    m_bDefaultRootNodeExists = TRUE;
    return QTB_SUCCESS;
}

HRESULT QTBEPdmNodeContOnPdmNodeCont::RemoveDefaultRootNode()
{
    QTB_SCOPE("QTBEPdmNodeContOnPdmNodeCont::RemoveDefaultRootNode");
    // Every document that starts before the first update creates one.
    do {
        QTB_CALL(RemovePdmNodeFromContainer, QTBReservedNames::DEFAULT_ROOT_NODE, FALSE, TRUE);
    } while (NodeExists(QTBReservedNames::DEFAULT_ROOT_NODE) != FALSE);
    m_bDefaultRootNodeExists = FALSE;
    return QTB_SUCCESS;
}

HRESULT QTBEPdmNodeContOnPdmNodeCont::GetPdmNodeByKey(const CATUnicodeString& usKey, QTBIPdmNode_var* pspIPdmNode,
                                                      unsigned char* pbNodeFound)
{
    QTB_SCOPE("QTBEPdmNodeContOnPdmNodeCont::GetPdmNodeByKey");
    QTB_ASSERT(pspIPdmNode != NULL);
    *pspIPdmNode = NULL_var;
    CATBaseUnknown_var spBaseUnknownOnNode;
    QTB_CALL(GetNodeByKey, usKey, &spBaseUnknownOnNode, pbNodeFound);
    if (*pbNodeFound != FALSE) {
        *pspIPdmNode = spBaseUnknownOnNode;
        QTB_INTERFACE(*pspIPdmNode);
    }
    return QTB_SUCCESS;
}

HRESULT QTBEPdmNodeContOnPdmNodeCont::GetPdmRootNodes(CATListValCATBaseUnknown_var* pListOfNodes)
{
    QTB_SCOPE("QTBEPdmNodeContOnPdmNodeCont::GetPdmRootNodes");
    QTB_ASSERT(pListOfNodes != NULL);
    pListOfNodes->RemoveAll();
    for (const CATListValCATBaseUnknown_var& Bucket : m_NodeBuckets) {
        for (const CATBaseUnknown_var& spBaseUnknownOnNode : Bucket) {
            const QTBIPdmObjNode_var spIPdmObjNodeOnNode(spBaseUnknownOnNode);
            if (spIPdmObjNodeOnNode == NULL_var) {
                continue;
            }
            unsigned char bIsPdmRootNode = FALSE;
            QTB_CALL(spIPdmObjNodeOnNode->IsPdmRootNode, &bIsPdmRootNode);
            if (bIsPdmRootNode != FALSE) {
                pListOfNodes->Append(spBaseUnknownOnNode);
            }
        }
    }
    return QTB_SUCCESS;
}

HRESULT QTBEPdmNodeContOnPdmNodeCont::GetAllPdmNodes(CATListValCATBaseUnknown_var* pListOfNodes)
{
    // The name of the rep node container's operation is meant.
    QTB_SCOPE("QTBERepNodeContOnRepNodeCont::GetAllPdmNodes");
    QTB_ASSERT(pListOfNodes != NULL);
    pListOfNodes->RemoveAll();
    for (const CATListValCATBaseUnknown_var& Bucket : m_NodeBuckets) {
        for (const CATBaseUnknown_var& spBaseUnknownOnNode : Bucket) {
            pListOfNodes->Append(spBaseUnknownOnNode);
        }
    }
    return QTB_SUCCESS;
}

HRESULT QTBEPdmNodeContOnPdmNodeCont::GetPdmNodes(CATListValCATUnicodeString* pClassNames,
                                                  const CATListValCATUnicodeString& PdmAttributeNames,
                                                  const CATListValCATUnicodeString& PdmAttributeValues,
                                                  CATListValCATBaseUnknown_var* pPdmNodes)
{
    QTB_SCOPE("QTBEPdmNodeContOnPdmNodeCont::GetPdmNodes");
    QTB_ASSERT(pPdmNodes != NULL);
    QTB_ASSERT(PdmAttributeNames.Size() == PdmAttributeValues.Size());
    QTB_ASSERT(pClassNames != NULL);
    pPdmNodes->RemoveAll();
    for (const CATListValCATBaseUnknown_var& Bucket : m_NodeBuckets) {
        for (const CATBaseUnknown_var& spBaseUnknownOnNode : Bucket) {
            const QTBIPdmNode_var spIPdmNode(spBaseUnknownOnNode);
            QTB_INTERFACE(spIPdmNode);
            CATUnicodeString usClassName;
            QTB_CALL(spIPdmNode->GetClassName, &usClassName);
            if (pClassNames->Locate(usClassName) == 0) {
                continue;
            }
            unsigned char bHasValues = TRUE;
            if (PdmAttributeNames.Size() > 0) {
                const QTBINodeAttributes_var spINodeAttributesOnPdmNode(spBaseUnknownOnNode);
                QTB_INTERFACE(spINodeAttributesOnPdmNode);
                for (int i = 1; i <= PdmAttributeNames.Size() && bHasValues != FALSE; ++i) {
                    CATUnicodeString usValue;
                    bHasValues = SUCCEEDED(spINodeAttributesOnPdmNode->GetStringAttributeValue(PdmAttributeNames[i],
                                                                                               &usValue, 0, 1)) &&
                                 usValue == PdmAttributeValues[i];
                }
            }
            if (bHasValues != FALSE) {
                pPdmNodes->Append(spBaseUnknownOnNode);
            }
        }
    }
    return QTB_SUCCESS;
}

HRESULT QTBEPdmNodeContOnPdmNodeCont::GetPdmNodes(const CATUnicodeString& usClassName,
                                                  const CATUnicodeString& usAttrName,
                                                  const CATUnicodeString& usAttrValue,
                                                  CATListValCATBaseUnknown_var* pPdmNodes)
{
    QTB_SCOPE("QTBEPdmNodeContOnPdmNodeCont::GetPdmNodes");
    QTB_ASSERT(pPdmNodes != NULL);
    CATListValCATUnicodeString ClassNames;
    ClassNames.Append(usClassName);
    CATListValCATUnicodeString PdmAttributeNames;
    CATListValCATUnicodeString PdmAttributeValues;
    if (!usAttrName.IsEmpty()) {
        PdmAttributeNames.Append(usAttrName);
        PdmAttributeValues.Append(usAttrValue);
    }
    QTB_CALL(GetPdmNodes, &ClassNames, PdmAttributeNames, PdmAttributeValues, pPdmNodes);
    return QTB_SUCCESS;
}

HRESULT QTBEPdmNodeContOnPdmNodeCont::GetPdmNode(const CATUnicodeString& usClassName,
                                                 const CATUnicodeString& usAttrName,
                                                 const CATUnicodeString& usAttrValue, QTBIPdmNode_var* pspIPdmNode)
{
    QTB_SCOPE("QTBEPdmNodeContOnPdmNodeCont::GetPdmNode");
    QTB_ASSERT(pspIPdmNode != NULL);
    CATListValCATBaseUnknown_var PdmNodes;
    QTB_CALL(GetPdmNodes, usClassName, usAttrName, usAttrValue, &PdmNodes);
    if (PdmNodes.Size() == 0) {
        return QTB_QUIET_FAILURE;
    }
    CATBaseUnknown_var spBaseUnknownOnNode = PdmNodes[1];
    if (PdmNodes.Size() > 1) {
        CATListValCATBaseUnknown_var FilteredPdmNodes(PdmNodes);
        if (SUCCEEDED(FilterPdmNodes(&FilteredPdmNodes)) && FilteredPdmNodes.Size() > 0) {
            spBaseUnknownOnNode = FilteredPdmNodes[1];
            if (FilteredPdmNodes.Size() > 1) {
                // The number is that before filtering, whatever the text says; this is meant.
                QTB_TRACE("WARNING: QTBEPdmNodeContOnPdmNodeCont::GetPdmNode -> GetPdmNodes returned "
                          << PdmNodes.Size() << " nodes (after filtering)");
            }
        }
    }
    *pspIPdmNode = spBaseUnknownOnNode;
    QTB_INTERFACE(*pspIPdmNode);
    return QTB_SUCCESS;
}

HRESULT QTBEPdmNodeContOnPdmNodeCont::FilterPdmNodes(CATListValCATBaseUnknown_var* pPdmNodes)
{
    QTB_SCOPE("QTBEPdmNodeContOnPdmNodeCont::FilterPdmNodes");
    QTB_ASSERT(pPdmNodes != NULL);
    QTB_CALL(QTBPdmGraphUtil::FilterForNewestActionIndex, pPdmNodes);
    return QTB_SUCCESS;
}

HRESULT QTBEPdmNodeContOnPdmNodeCont::GetPdmPartByPartNumber(const CATUnicodeString& usPartNumber,
                                                             QTBIPdmNode_var* pspIPdmNodeOnPart)
{
    QTB_SCOPE("QTBEPdmNodeContOnPdmNodeCont::GetPdmPartByPartNumber");
    QTB_ASSERT(usPartNumber != "");
    QTB_ASSERT(pspIPdmNodeOnPart != NULL);
    CATUnicodeString usPartClass;
    QTB_CALL(QTBPdmSessionUtil::GetPdmSessionStringAttrValue, QTB_PDM_SESSION_PART_CLASS, &usPartClass, TRUE);
    CATUnicodeString usPartNumberAttr;
    QTB_CALL(QTBPdmSessionUtil::GetPdmSessionStringAttrValue, QTB_PDM_SESSION_PART_NUMBER_ATTR, &usPartNumberAttr,
             TRUE);
    QTB_CALL(GetPdmNode, usPartClass, usPartNumberAttr, usPartNumber, pspIPdmNodeOnPart);
    return QTB_SUCCESS;
}
