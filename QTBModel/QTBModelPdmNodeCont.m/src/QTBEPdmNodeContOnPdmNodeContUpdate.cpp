#include "CATIDOMDocument.h"
#include "QTBCheck.h"
#include "QTBEPdmNodeContOnPdmNodeCont.h"
#include "QTBGlobVarsUtil.h"
#include "QTBINodeAttributes.h"
#include "QTBIPdmNodeCont.h"
#include "QTBIPdmObjNode.h"
#include "QTBIPdmRelNode.h"
#include "QTBInfoUtil.h"
#include "QTBNameValueListAttr.h"
#include "QTBReservedNames.h"
#include "QTBSchema.h"
#include "QTBSchemaObject.h"
#include "QTBSchemaRelation.h"
#include "QTBSchemaUtil.h"
#include "QTBTraceUtil.h"
#include "QTBXmlUtil.h"

namespace {

// Every node of an answer is read with these.
const CATUnicodeString ATTRIBUTE_TAG("a");
const CATUnicodeString NAME_ATTRIBUTE("name");
const CATUnicodeString OBJECT_TAG("o");
const CATUnicodeString RELATION_TAG("r");
const CATUnicodeString RELEVANT_BASE_CLASS("QtbRelevantBaseClass");

// One of the two lists of items that an answer wants to have removed, and its texts.
struct Deletion
{
    const char* tag;
    const char* elementText;
    const char* keyText;
};

constexpr Deletion OBJECT_DELETION = {"objectToDelete", "spIDOMElementObjectToDelete", "usKeyOfObjectToDelete != \"\""};
constexpr Deletion RELATION_DELETION = {"relationToDelete", "spIDOMElementRelationToDelete",
                                        "usKeyOfRelationToDelete != \"\""};

} // namespace

struct QTBEPdmNodeContOnPdmNodeCont::ReadRequest
{
    const CATUnicodeString& usXmlType;
    CATUnicodeString usClassAttrName;
    CATUnicodeString usKeyAttrName;
};

HRESULT QTBEPdmNodeContOnPdmNodeCont::UpdatePdmGraph(const CATUnicodeString& usXml,
                                                     CATListValCATBaseUnknown_var* pReadObjectNodes,
                                                     CATListValCATBaseUnknown_var* pReadRelationNodes)
{
    QTB_SCOPE("QTBEPdmNodeContOnPdmNodeCont::UpdatePdmGraph");
    CATIDOMDocument_var spIDOMDocument;
    if (usXml != "") {
        QTB_RESULT_AS("GetDomDocument", QTBXmlUtil::GetDomDocument(usXml, &spIDOMDocument));
    }
    QTB_CALL(UpdatePdmGraph, spIDOMDocument, pReadObjectNodes, pReadRelationNodes);
    return QTB_SUCCESS;
}

HRESULT QTBEPdmNodeContOnPdmNodeCont::UpdatePdmGraph(const CATIDOMDocument_var& spIDOMDocument,
                                                     CATListValCATBaseUnknown_var* pReadObjectNodes,
                                                     CATListValCATBaseUnknown_var* pReadRelationNodes)
{
    QTB_SCOPE("QTBEPdmNodeContOnPdmNodeCont::UpdatePdmGraph");
    QTB_CALL(QTBGlobVarsUtil::IncActionIndex);
    if (m_bDefaultRootNodeExists != FALSE) {
        if (NodeExists(QTBReservedNames::DEFAULT_ROOT_NODE) != FALSE) {
            QTB_CALL(RemoveDefaultRootNode);
        } else {
            // It went with a clean-up, which leaves the flag alone.
            m_bDefaultRootNodeExists = FALSE;
        }
    }
    if (spIDOMDocument == NULL_var) {
        return QTB_SUCCESS;
    }

    CATListValCATBaseUnknown_var ObjectNodes;
    CATListValCATBaseUnknown_var RelationNodes;
    QTB_CALL(ReadPdmNodes, spIDOMDocument, &ObjectNodes, &RelationNodes);

    int iActionIndex = 0;
    QTB_CALL(QTBGlobVarsUtil::GetCurrentActionIndex, &iActionIndex);
    if (const HRESULT hr = StampNodes(ObjectNodes, iActionIndex); FAILED(hr)) {
        return hr;
    }
    if (const HRESULT hr = StampNodes(RelationNodes, iActionIndex); FAILED(hr)) {
        return hr;
    }

    QTB_CALL(ReplaceNodesIfNecessary, ObjectNodes);
    QTB_CALL(ReplaceNodesIfNecessary, RelationNodes);
    QTB_CALL(UpdateNodeRelations, &RelationNodes);
    QTB_CALL(RemoveNodesToBeDeleted, spIDOMDocument);

    if (pReadObjectNodes != NULL) {
        *pReadObjectNodes = ObjectNodes;
    }
    if (pReadRelationNodes != NULL) {
        *pReadRelationNodes = RelationNodes;
    }
    return QTB_SUCCESS;
}

// A node that cannot be stamped is no reason to give up the answer.
HRESULT QTBEPdmNodeContOnPdmNodeCont::StampNodes(const CATListValCATBaseUnknown_var& ListOfNodes, int iActionIndex)
{
    for (int i = 1; i <= ListOfNodes.Size(); ++i) {
        QTBIPdmNode_var spIPdmNode(ListOfNodes[i]);
        QTB_INTERFACE(spIPdmNode);
        if (FAILED(QTBInfoUtil::SetActionIndex(iActionIndex, &spIPdmNode))) {
            QTB_TRACE("QTBEPdmNodeContOnPdmNodeCont::UpdatePdmGraph -> i:" << i << ": QTBInfoUtil::SetActionIndex !");
        }
    }
    return QTB_SUCCESS;
}

HRESULT QTBEPdmNodeContOnPdmNodeCont::ReadPdmNodes(const CATIDOMDocument_var& spIDOMDocument,
                                                   CATListValCATBaseUnknown_var* pReadObjectNodes,
                                                   CATListValCATBaseUnknown_var* pReadRelationNodes)
{
    QTB_SCOPE("QTBEPdmNodeContOnPdmNodeCont::ReadPdmNodes");
    QTB_ASSERT(pReadObjectNodes);
    QTB_ASSERT(pReadRelationNodes);
    pReadObjectNodes->RemoveAll();
    pReadRelationNodes->RemoveAll();
    QTB_RESULT_AS("ReadPdmNodesOfType object", ReadPdmNodesOfType(OBJECT_TAG, spIDOMDocument, TRUE, pReadObjectNodes));
    QTB_RESULT_AS("ReadPdmNodesOfType relation",
                  ReadPdmNodesOfType(RELATION_TAG, spIDOMDocument, FALSE, pReadRelationNodes));
    return QTB_SUCCESS;
}

HRESULT QTBEPdmNodeContOnPdmNodeCont::ReadPdmNodesOfType(const CATUnicodeString& usXmlType,
                                                         const CATIDOMDocument_var& spIDOMDocument,
                                                         unsigned char bObjects,
                                                         CATListValCATBaseUnknown_var* pListOfNodes)
{
    QTB_SCOPE("QTBEPdmNodeContOnPdmNodeCont::ReadPdmNodesOfType");
    QTB_ASSERT(pListOfNodes != NULL);
    QTB_INTERFACE(spIDOMDocument);
    CATListValCATBaseUnknown_var ListOfElements;
    const HRESULT hrCollect = bObjects != FALSE ? CollectObjectElements(usXmlType, spIDOMDocument, &ListOfElements)
                                                : CollectRelationElements(usXmlType, spIDOMDocument, &ListOfElements);
    if (FAILED(hrCollect)) {
        return hrCollect;
    }

    CATUnicodeString usClassAttrName;
    QTB_CALL(QTBSchemaUtil::GetClassAttr, &usClassAttrName);
    QTB_ASSERT(usClassAttrName != "");
    CATUnicodeString usKeyAttrName;
    QTB_CALL(QTBSchemaUtil::GetKeyAttr, &usKeyAttrName);
    QTB_ASSERT(usKeyAttrName != "");

    const ReadRequest request{usXmlType, usClassAttrName, usKeyAttrName};
    pListOfNodes->Reserve(pListOfNodes->Size() + ListOfElements.Size());
    for (int i = 1; i <= ListOfElements.Size(); ++i) {
        const CATIDOMElement_var spIDOMElement(ListOfElements[i]);
        QTB_INTERFACE(spIDOMElement);
        if (const HRESULT hr = ReadPdmNode(request, i, spIDOMElement, pListOfNodes); FAILED(hr)) {
            return hr;
        }
    }
    return QTB_SUCCESS;
}

HRESULT QTBEPdmNodeContOnPdmNodeCont::CollectObjectElements(const CATUnicodeString& usXmlType,
                                                            const CATIDOMDocument_var& spIDOMDocument,
                                                            CATListValCATBaseUnknown_var* pElements)
{
    CATIDOMElement_var spIDOMElementOnDocumentRoot;
    QTB_CALL(spIDOMDocument->GetDocumentElement, &spIDOMElementOnDocumentRoot);
    QTB_ASSERT(spIDOMElementOnDocumentRoot != NULL_var);
    CATListValCATBaseUnknown_var ListOfFunctionNodes;
    QTB_CALL(QTBXmlUtil::GetElements, spIDOMElementOnDocumentRoot, "function", "", "", &ListOfFunctionNodes);
    QTB_ASSERT(ListOfFunctionNodes.Size() == 1);
    const CATIDOMElement_var spIDOMElementOnFunctionNode(ListOfFunctionNodes[1]);
    QTB_INTERFACE(spIDOMElementOnFunctionNode);
    CATUnicodeString usFunctionName;
    QTB_CALL(spIDOMElementOnFunctionNode->GetAttribute, NAME_ATTRIBUTE, &usFunctionName);
    if (usFunctionName == "dynamicInvoke") {
        QTB_CALL(QTBXmlUtil::GetOutArgObjectsOfInvokeFunction, spIDOMElementOnFunctionNode, pElements);
    } else {
        QTB_CALL(QTBXmlUtil::GetElements, spIDOMElementOnFunctionNode, usXmlType, "", "", pElements);
    }
    return QTB_SUCCESS;
}

HRESULT QTBEPdmNodeContOnPdmNodeCont::CollectRelationElements(const CATUnicodeString& usXmlType,
                                                              const CATIDOMDocument_var& spIDOMDocument,
                                                              CATListValCATBaseUnknown_var* pElements)
{
    CATIDOMNodeList_var spIDOMNodeList;
    QTB_CALL(spIDOMDocument->GetElementsByTagName, usXmlType, &spIDOMNodeList);
    int iLength = 0;
    QTB_CALL(spIDOMNodeList->GetLength, &iLength);
    pElements->Reserve(iLength);
    for (int i = 0; i < iLength; ++i) {
        CATIDOMNode_var spIDOMNode;
        QTB_CALL(spIDOMNodeList->Item, i, &spIDOMNode);
        const CATIDOMElement_var spIDOMElement(spIDOMNode);
        QTB_INTERFACE(spIDOMElement);
        pElements->Append(spIDOMElement);
    }
    return QTB_SUCCESS;
}

HRESULT QTBEPdmNodeContOnPdmNodeCont::ReadPdmNode(const ReadRequest& request, int i,
                                                  const CATIDOMElement_var& spIDOMElement,
                                                  CATListValCATBaseUnknown_var* pListOfNodes)
{
    bool isKnownClass = false;
    if (const HRESULT hr = CheckClass(request, i, spIDOMElement, &isKnownClass); FAILED(hr)) {
        return hr;
    }
    if (!isKnownClass) {
        return QTB_SUCCESS;
    }
    bool hasKey = false;
    CATUnicodeString usQtbNodeKey;
    if (const HRESULT hr = ReadKey(request, spIDOMElement, &hasKey, &usQtbNodeKey); FAILED(hr)) {
        return hr;
    }
    if (!hasKey) {
        return QTB_SUCCESS;
    }
    CATBaseUnknown_var spIBaseUnknownOnNode;
    if (const HRESULT hr = MakeNode(request, i, usQtbNodeKey, &spIBaseUnknownOnNode); FAILED(hr)) {
        return hr;
    }

    const QTBINodeAttributes_var spINodeAttributesOnQtbNode(spIBaseUnknownOnNode);
    QTB_INTERFACE(spINodeAttributesOnQtbNode);
    QTB_CALL(spINodeAttributesOnQtbNode->SetXmlElement, spIDOMElement);
    pListOfNodes->Append(spIBaseUnknownOnNode);
    const QTBIPdmNode_var spIPdmNodeOnNode(spIBaseUnknownOnNode);
    QTB_INTERFACE(spIPdmNodeOnNode);
    QTB_CALL(spIPdmNodeOnNode->SetPdmKey);
    QTB_CALL(UpdateNodeSchemaPtr, spIBaseUnknownOnNode);
    // Said of replaced nodes too.
    QTB_TRACE("QTBEPdmNodeContOnPdmNodeCont::ReadPdmNodesOfType("
              << request.usXmlType << ") -> i:" << i << " -> created PDM node "
              << QTBTraceUtil::GetNodeString(spIBaseUnknownOnNode, FALSE));
    return QTB_SUCCESS;
}

// An element without class attribute is not checked.
HRESULT QTBEPdmNodeContOnPdmNodeCont::CheckClass(const ReadRequest& request, int i,
                                                 const CATIDOMElement_var& spIDOMElement, bool* pIsKnown)
{
    *pIsKnown = true;
    CATIDOMElement_var spIDOMElementOnClassAttr;
    if (FAILED(
            QTBXmlUtil::GetSingleAttributeElement(spIDOMElement, request.usClassAttrName, &spIDOMElementOnClassAttr))) {
        return QTB_SUCCESS;
    }
    CATUnicodeString usQtbNodeClass;
    QTB_CALL(QTBXmlUtil::GetCharData, spIDOMElementOnClassAttr, &usQtbNodeClass);
    QTB_ASSERT(usQtbNodeClass != "");
    unsigned char bClassIsDefined = FALSE;
    QTB_CALL(QTBSchemaUtil::PdmClassIsDefined, usQtbNodeClass, &bClassIsDefined, NULL);
    if (bClassIsDefined != FALSE) {
        return QTB_SUCCESS;
    }

    CATIDOMElement_var spIDOMElementOnQtbInfo;
    if (SUCCEEDED(QTBXmlUtil::GetSingleAttributeElement(spIDOMElement, QTBReservedNames::QTB_INFO,
                                                        &spIDOMElementOnQtbInfo))) {
        const QTBNameValueListAttr QtbInfoAttr(&spIDOMElementOnQtbInfo);
        unsigned char bBaseClassIsGiven = FALSE;
        QTB_CALL(QtbInfoAttr.NvValueIsDefined, RELEVANT_BASE_CLASS, &bBaseClassIsGiven);
        if (bBaseClassIsGiven != FALSE) {
            CATUnicodeString usRelevantBaseClass;
            QTB_CALL(QtbInfoAttr.GetNvValue, RELEVANT_BASE_CLASS, &usRelevantBaseClass);
            QTB_TRACE("QTBEPdmNodeContOnPdmNodeCont::ReadPdmNodesOfType -> using relevant base class ["
                      << usRelevantBaseClass << "] instead of actual class [" << usQtbNodeClass << "]");
            QTB_CALL(QTBSchemaUtil::PdmClassIsDefined, usRelevantBaseClass, &bClassIsDefined, NULL);
        }
    }
    if (bClassIsDefined == FALSE) {
        QTB_TRACE("QTBEPdmNodeContOnPdmNodeCont::ReadPdmNodesOfType("
                  << request.usXmlType << ") i:" << i << " -> class [" << usQtbNodeClass
                  << "] is not defined in QTBSchema, ignoring node.");
        *pIsKnown = false;
    }
    return QTB_SUCCESS;
}

HRESULT QTBEPdmNodeContOnPdmNodeCont::ReadKey(const ReadRequest& request, const CATIDOMElement_var& spIDOMElement,
                                              bool* pHasKey, CATUnicodeString* pusQtbNodeKey)
{
    *pHasKey = false;
    CATListValCATBaseUnknown_var ListOfKeyAttributes;
    QTB_CALL(QTBXmlUtil::GetElements, spIDOMElement, ATTRIBUTE_TAG, NAME_ATTRIBUTE, request.usKeyAttrName,
             &ListOfKeyAttributes);
    if (ListOfKeyAttributes.Size() != 1) {
        QTB_TRACE("WARNING: QTBXmlUtil::GetElements returned "
                  << (ListOfKeyAttributes.Size() == 0 ? "no attribute" : "more than one attribute"));
        QTB_TRACE("         with name " << request.usKeyAttrName);
        return QTB_SUCCESS;
    }
    CATUnicodeString usQtbNodeKey;
    QTB_CALL(QTBXmlUtil::GetCharData, ListOfKeyAttributes[1], &usQtbNodeKey);
    QTB_ASSERT(usQtbNodeKey != "");
    *pHasKey = true;
    *pusQtbNodeKey = usQtbNodeKey;
    return QTB_SUCCESS;
}

// The node to read an element into: a new one, in the place of the one that the graph holds under that key.
HRESULT QTBEPdmNodeContOnPdmNodeCont::MakeNode(const ReadRequest& request, int i, const CATUnicodeString& usQtbNodeKey,
                                               CATBaseUnknown_var* pspBaseUnknownOnNode)
{
    const CATUnicodeString& usXmlType = request.usXmlType;
    const bool isObject = usXmlType == OBJECT_TAG;
    if (!isObject && usXmlType != RELATION_TAG) {
        QTB_TRACE("ERROR: Wrong xml node type: \"" << usXmlType << "\"");
    }
    QTB_ASSERT((usXmlType == "o") || (usXmlType == "r"));

    CATBaseUnknown_var spBaseUnknownOnExistingNode;
    unsigned char bNodeExists = FALSE;
    QTB_CALL(GetNodeByKey, usQtbNodeKey, &spBaseUnknownOnExistingNode, &bNodeExists);
    if (bNodeExists != FALSE) {
        QTBIPdmNode_var spIPdmNodeOnOldNode(spBaseUnknownOnExistingNode);
        QTB_INTERFACE(spIPdmNodeOnOldNode);
        QTB_TRACE("QTBEPdmNodeContOnPdmNodeCont::ReadPdmNodesOfType("
                  << usXmlType << ") -> i:" << i << " -> replacing PDM node ["
                  << QTBTraceUtil::GetNodeString(spBaseUnknownOnExistingNode, FALSE) << "]");
        QTBIPdmNode_var spIPdmNodeOnNewNode;
        QTB_CALL(ReplacePdmNode, &spIPdmNodeOnOldNode, &spIPdmNodeOnNewNode);
        const CATBaseUnknown_var spIBaseUnknownOnNode(spIPdmNodeOnNewNode);
        QTB_INTERFACE(spIBaseUnknownOnNode);
        *pspBaseUnknownOnNode = spIBaseUnknownOnNode;
    } else if (isObject) {
        QTB_CALL(CreatePdmObjNode, usQtbNodeKey, pspBaseUnknownOnNode, TRUE);
    } else {
        QTB_CALL(CreatePdmRelNode, usQtbNodeKey, pspBaseUnknownOnNode, TRUE);
    }
    return QTB_SUCCESS;
}

HRESULT QTBEPdmNodeContOnPdmNodeCont::ReplacePdmNode(QTBIPdmNode_var* pspIPdmNodeOnOldNode,
                                                     QTBIPdmNode_var* pspIPdmNodeOnNewNode)
{
    QTB_SCOPE("QTBEPdmNodeContOnPdmNodeCont::ReplacePdmNode");
    QTB_ASSERT(pspIPdmNodeOnOldNode != NULL);
    QTB_ASSERT_AS("*pspIPdmNodeOnOldNode", *pspIPdmNodeOnOldNode != NULL_var);
    QTB_ASSERT(pspIPdmNodeOnNewNode != NULL);
    const QTBINodeAttributes_var spINodeAttributesOnOldPdmNode(*pspIPdmNodeOnOldNode);
    QTB_INTERFACE(spINodeAttributesOnOldPdmNode);
    CATUnicodeString usKey;
    QTB_CALL(spINodeAttributesOnOldPdmNode->GetKey, &usKey);
    const QTBIPdmNode_var spIPdmNodeOnOldNode(*pspIPdmNodeOnOldNode);
    QTB_INTERFACE(spIPdmNodeOnOldNode);

    CATBaseUnknown_var spBaseUnknownOnNewPdmNode;
    if (QTBIPdmObjNode_var(spIPdmNodeOnOldNode) != NULL_var) {
        QTB_CALL(CreatePdmObjNode, usKey, &spBaseUnknownOnNewPdmNode, TRUE);
    } else {
        QTB_CALL(CreatePdmRelNode, usKey, &spBaseUnknownOnNewPdmNode, TRUE);
    }
    QTB_INTERFACE(spBaseUnknownOnNewPdmNode);
    CATBaseUnknown_var spBaseUnknownOnOldPdmNode(spIPdmNodeOnOldNode);
    QTB_CALL(RemoveNodeFromContainer, &spBaseUnknownOnOldPdmNode, &spBaseUnknownOnNewPdmNode);
    *pspIPdmNodeOnNewNode = spBaseUnknownOnNewPdmNode;
    QTB_INTERFACE(*pspIPdmNodeOnNewNode);
    return QTB_SUCCESS;
}

HRESULT QTBEPdmNodeContOnPdmNodeCont::UpdateNodeSchemaPtr(const CATBaseUnknown_var& spBaseUnknownOnNode)
{
    QTB_SCOPE("QTBEPdmNodeContOnPdmNodeCont::UpdateNodeSchemaPtr");
    QTB_CALL(QTBSchemaUtil::GetCurrentSchemaPtr, &m_pSchema);
    const QTBIPdmNode_var spIPdmNode(spBaseUnknownOnNode);
    QTB_INTERFACE(spIPdmNode);
    const QTBINodeAttributes_var spINodeAttributesOnQtbNode(spBaseUnknownOnNode);
    QTB_INTERFACE(spINodeAttributesOnQtbNode);
    CATUnicodeString usKey;
    QTB_CALL(spINodeAttributesOnQtbNode->GetKey, &usKey);

    CATUnicodeString usClassName;
    const QTBIPdmObjNode_var spIPdmObjNode(spBaseUnknownOnNode);
    if (spIPdmObjNode != NULL_var) {
        QTB_CALL(spIPdmObjNode->GetClassAttr, &usClassName, 0);
        QTB_ASSERT(usClassName != "");
        QTBSchemaObject* pSchemaObject = NULL;
        QTB_CALL(m_pSchema->GetObjectPtr, usClassName, &pSchemaObject);
        QTB_CALL(spIPdmNode->SetSchemaNodePtr, pSchemaObject);
        QTB_CALL(spIPdmObjNode->SetSchemaObjectPtr, pSchemaObject);
        return QTB_SUCCESS;
    }
    const QTBIPdmRelNode_var spIPdmRelNode(spBaseUnknownOnNode);
    if (spIPdmRelNode != NULL_var) {
        QTB_CALL(spINodeAttributesOnQtbNode->GetStringAttributeValue, m_pSchema->GetRelationAttr(), &usClassName, 0, 1);
        QTB_ASSERT(usClassName != "");
        QTBSchemaRelation* pSchemaRelation = NULL;
        QTB_CALL(m_pSchema->GetRelationPtr, usClassName, &pSchemaRelation);
        QTB_CALL(spIPdmNode->SetSchemaNodePtr, pSchemaRelation);
        QTB_CALL(spIPdmRelNode->SetSchemaRelationPtr, pSchemaRelation);
    }
    return QTB_SUCCESS;
}

HRESULT QTBEPdmNodeContOnPdmNodeCont::RemoveNodesToBeDeleted(const CATIDOMDocument_var& spIDOMDocument)
{
    QTB_SCOPE("QTBEPdmNodeContOnPdmNodeCont::RemoveNodesToBeDeleted");
    QTB_INTERFACE(spIDOMDocument);
    for (const Deletion& deletion : {OBJECT_DELETION, RELATION_DELETION}) {
        CATIDOMNodeList_var ListOfXmlNodesToDelete;
        QTB_CALL(spIDOMDocument->GetElementsByTagName, deletion.tag, &ListOfXmlNodesToDelete);
        int iLength = 0;
        QTB_CALL(ListOfXmlNodesToDelete->GetLength, &iLength);
        for (int i = 0; i < iLength; ++i) {
            CATIDOMNode_var spIDOMNode;
            QTB_CALL(ListOfXmlNodesToDelete->Item, i, &spIDOMNode);
            const CATIDOMElement_var spIDOMElement(spIDOMNode);
            QTB_INTERFACE_AS(deletion.elementText, spIDOMElement);
            CATUnicodeString usKey;
            QTB_CALL(QTBXmlUtil::GetCharData, spIDOMElement, &usKey);
            QTB_ASSERT_AS(deletion.keyText, usKey != "");
            if (const HRESULT hr = RemoveNodeToBeDeleted(i, usKey); FAILED(hr)) {
                return hr;
            }
        }
    }
    return QTB_SUCCESS;
}

HRESULT QTBEPdmNodeContOnPdmNodeCont::RemoveNodeToBeDeleted(int i, const CATUnicodeString& usKey)
{
    CATBaseUnknown_var spBaseUnknownOnNode;
    unsigned char bNodeExists = FALSE;
    QTB_CALL(GetNodeByKey, usKey, &spBaseUnknownOnNode, &bNodeExists);
    if (bNodeExists == FALSE) {
        QTB_TRACE("QTBEPdmNodeContOnPdmNodeCont::RemoveNodesToBeDeleted -> i:"
                  << i << ": PDM node to be deleted with key [" << usKey << "] was not found, ignoring it");
        return QTB_SUCCESS;
    }
    QTBIPdmNode_var spIPdmNodeToBeDeleted(spBaseUnknownOnNode);
    QTB_INTERFACE(spIPdmNodeToBeDeleted);
    CATUnicodeString usDescription;
    QTB_CALL(spIPdmNodeToBeDeleted->GetDescriptionString, &usDescription);
    QTB_TRACE("QTBEPdmNodeContOnPdmNodeCont::RemoveNodesToBeDeleted -> i:" << i << ": removing PDM node ["
                                                                           << usDescription << "] from PDM graph");
    if (FAILED(RemovePdmNodeFromContainer(&spIPdmNodeToBeDeleted, FALSE, TRUE))) {
        QTB_TRACE("QTBEPdmNodeContOnPdmNodeCont::RemoveNodesToBeDeleted -> i:"
                  << i << ": " << QTBTraceUtil::GetNodeString(spBaseUnknownOnNode, FALSE)
                  << ": RemovePdmNodeFromContainer !");
    }
    return QTB_SUCCESS;
}
