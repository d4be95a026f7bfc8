#include "QTBEPdmObjNodeOnPdmObjNode.h"

#include "QTBCheck.h"
#include "QTBGlobVarsUtil.h"
#include "QTBINodeAttributes.h"
#include "QTBIPdmNode.h"
#include "QTBIPdmNodeCont.h"
#include "QTBIPdmObjNode.h"
#include "QTBIPdmRelNode.h"
#include "QTBInfoUtil.h"
#include "QTBPdmGraphUtil.h"
#include "QTBReservedNames.h"
#include "QTBSchemaUtil.h"
#include "QTBTraceUtil.h"

struct QTBEPdmObjNodeOnPdmObjNode::Request
{
    CATUnicodeString relationName;
    CATListValCATBaseUnknown_var* pPdmRels;
    // May be null.
    CATListValCATBaseUnknown_var* pPdmObjs;
    NodesToRetrieve mode;
    // May be null.
    CATListValCATUnicodeString* pObjectClasses;
    unsigned char newestVersionsOnly;
};

namespace {

// The two sides: which operations of the interfaces belong to a side, and its texts.
struct LeftSide
{
    static constexpr const char* GET_NODES = "QTBEPdmObjNodeOnPdmObjNode::GetLeftNodes";
    static constexpr const char* GET_NODES_WITHOUT_PARENT_CLASSES =
        "QTBEPdmObjNodeOnPdmObjNode::GetLeftNodesWithoutParentClasses";

    static constexpr const char* NODES_CALL = "GetLeftNodes";
    static constexpr const char* NODES_WITHOUT_PARENT_CLASSES_CALL = "GetLeftNodesWithoutParentClasses";
    static constexpr const char* NODE_LIST_ON_THIS_CALL = "spINodeRelationsOnThis->GetLeftNodeList";
    static constexpr const char* NODE_LIST_ON_REL_CALL = "spINodeRelationsOnRel->GetLeftNodeList";
    static constexpr const char* RELATION_NAMES_CALL = "spINodeRelationsOnThis->GetLeftRelationNames";
    static constexpr const char* FIRST_NODES_CALL = "spINodeRelationsOnThis->GetFirstNodeOfEachLeftPdmRelation";

    static constexpr auto NODE_LIST = &QTBINodeRelations::GetLeftNodeList;
    static constexpr auto RELATION_NAMES = &QTBINodeRelations::GetLeftRelationNames;
    static constexpr auto FIRST_NODES = &QTBINodeRelations::GetFirstNodeOfEachLeftPdmRelation;
};

struct RightSide
{
    static constexpr const char* GET_NODES = "QTBEPdmObjNodeOnPdmObjNode::GetRightNodes";
    static constexpr const char* GET_NODES_WITHOUT_PARENT_CLASSES =
        "QTBEPdmObjNodeOnPdmObjNode::GetRightNodesWithoutParentClasses";

    static constexpr const char* NODES_CALL = "GetRightNodes";
    static constexpr const char* NODES_WITHOUT_PARENT_CLASSES_CALL = "GetRightNodesWithoutParentClasses";
    static constexpr const char* NODE_LIST_ON_THIS_CALL = "spINodeRelationsOnThis->GetRightNodeList";
    static constexpr const char* NODE_LIST_ON_REL_CALL = "spINodeRelationsOnRel->GetRightNodeList";
    static constexpr const char* RELATION_NAMES_CALL = "spINodeRelationsOnThis->GetRightRelationNames";
    static constexpr const char* FIRST_NODES_CALL = "spINodeRelationsOnThis->GetFirstNodeOfEachRightPdmRelation";

    static constexpr auto NODE_LIST = &QTBINodeRelations::GetRightNodeList;
    static constexpr auto RELATION_NAMES = &QTBINodeRelations::GetRightRelationNames;
    static constexpr auto FIRST_NODES = &QTBINodeRelations::GetFirstNodeOfEachRightPdmRelation;
};

} // namespace

HRESULT QTBEPdmObjNodeOnPdmObjNode::IsPdmRootNode(unsigned char* pbIsPdmRootNode)
{
    QTB_SCOPE("QTBEPdmObjNodeOnPdmObjNode::IsPdmRootNode");
    QTB_ASSERT(pbIsPdmRootNode != NULL);
    *pbIsPdmRootNode = FALSE;
    const QTBINodeRelations_var spINodeRelationsOnThis(this);
    QTB_INTERFACE(spINodeRelationsOnThis);
    int iLeftRelationsCount = 0;
    QTB_CALL(spINodeRelationsOnThis->GetLeftRelationsCount, &iLeftRelationsCount, FALSE);
    if (iLeftRelationsCount == 0) {
        *pbIsPdmRootNode = TRUE;
        return QTB_SUCCESS;
    }
    CATListValCATBaseUnknown_var CurrentLeftRelations;
    QTB_CALL(spINodeRelationsOnThis->GetAllLeftRelations, &CurrentLeftRelations, TRUE, ONLY_CURRENT_NODES);
    *pbIsPdmRootNode = CurrentLeftRelations.Size() == 0 ? TRUE : FALSE;
    return QTB_SUCCESS;
}

HRESULT QTBEPdmObjNodeOnPdmObjNode::GetRightNodes(const CATUnicodeString& usRelationName,
                                                  CATListValCATBaseUnknown_var* pPdmRels,
                                                  CATListValCATBaseUnknown_var* pPdmObjs, const NodesToRetrieve& mode,
                                                  const unsigned char& bIncludeRelationSubclasses,
                                                  CATListValCATUnicodeString* pObjectClasses,
                                                  const unsigned char& bNewestVersionsOnly)
{
    return GetNodes<RightSide>({usRelationName, pPdmRels, pPdmObjs, mode, pObjectClasses, bNewestVersionsOnly},
                               bIncludeRelationSubclasses);
}

HRESULT QTBEPdmObjNodeOnPdmObjNode::GetLeftNodes(const CATUnicodeString& usRelationName,
                                                 CATListValCATBaseUnknown_var* pPdmRels,
                                                 CATListValCATBaseUnknown_var* pPdmObjs, const NodesToRetrieve& mode,
                                                 const unsigned char& bIncludeRelationSubclasses,
                                                 CATListValCATUnicodeString* pObjectClasses,
                                                 const unsigned char& bNewestVersionsOnly)
{
    return GetNodes<LeftSide>({usRelationName, pPdmRels, pPdmObjs, mode, pObjectClasses, bNewestVersionsOnly},
                              bIncludeRelationSubclasses);
}

HRESULT QTBEPdmObjNodeOnPdmObjNode::GetRightNodesWithoutParentClasses(const CATUnicodeString& usRelationName,
                                                                      CATListValCATBaseUnknown_var* pPdmRels,
                                                                      CATListValCATBaseUnknown_var* pPdmObjs,
                                                                      const NodesToRetrieve& mode,
                                                                      CATListValCATUnicodeString* pObjectClasses,
                                                                      const unsigned char& bNewestVersionsOnly)
{
    return GetNodesWithoutParentClasses<RightSide>(
        {usRelationName, pPdmRels, pPdmObjs, mode, pObjectClasses, bNewestVersionsOnly});
}

HRESULT QTBEPdmObjNodeOnPdmObjNode::GetLeftNodesWithoutParentClasses(const CATUnicodeString& usRelationName,
                                                                     CATListValCATBaseUnknown_var* pPdmRels,
                                                                     CATListValCATBaseUnknown_var* pPdmObjs,
                                                                     const NodesToRetrieve& mode,
                                                                     CATListValCATUnicodeString* pObjectClasses,
                                                                     const unsigned char& bNewestVersionsOnly)
{
    return GetNodesWithoutParentClasses<LeftSide>(
        {usRelationName, pPdmRels, pPdmObjs, mode, pObjectClasses, bNewestVersionsOnly});
}

template <class Side>
HRESULT QTBEPdmObjNodeOnPdmObjNode::GetNodes(const Request& request, const unsigned char& bIncludeRelationSubclasses)
{
    QTB_SCOPE(Side::GET_NODES);
    CATListValCATBaseUnknown_var* pPdmRels = request.pPdmRels;
    QTB_ASSERT(pPdmRels != NULL);
    pPdmRels->RemoveAll();
    if (request.pPdmObjs != NULL) {
        request.pPdmObjs->RemoveAll();
    }
    if (bIncludeRelationSubclasses != FALSE) {
        return GetNodesOfSubclasses<Side>(request);
    }
    QTB_RESULT_AS(Side::NODES_WITHOUT_PARENT_CLASSES_CALL, GetNodesWithoutParentClasses<Side>(request));
    return QTB_SUCCESS;
}

template <class Side>
HRESULT QTBEPdmObjNodeOnPdmObjNode::GetNodesOfSubclasses(const Request& request)
{
    const QTBINodeRelations_var spINodeRelationsOnThis(this);
    QTB_INTERFACE(spINodeRelationsOnThis);
    CATListValCATBaseUnknown_var FirstNodes;
    QTB_RESULT_AS(Side::FIRST_NODES_CALL, ((*spINodeRelationsOnThis).*Side::FIRST_NODES)(&FirstNodes));

    CATListValCATBaseUnknown_var AllPdmRels;
    CATListValCATBaseUnknown_var AllPdmObjs;
    for (const CATBaseUnknown_var& spFirstNode : FirstNodes) {
        const QTBIPdmRelNode_var spIPdmRelNode(spFirstNode);
        QTB_INTERFACE(spIPdmRelNode);
        unsigned char bIsA = FALSE;
        QTB_CALL(spIPdmRelNode->IsA, request.relationName, &bIsA);
        if (bIsA == FALSE) {
            continue;
        }
        CATListValCATBaseUnknown_var PdmRels;
        CATListValCATBaseUnknown_var PdmObjs;
        Request requestForClass(request);
        requestForClass.pPdmRels = &PdmRels;
        requestForClass.pPdmObjs = request.pPdmObjs != NULL ? &PdmObjs : NULL;
        QTB_CALL(spIPdmRelNode->GetRelationAttr, &requestForClass.relationName, NULL);
        QTB_RESULT_AS(Side::NODES_WITHOUT_PARENT_CLASSES_CALL, GetNodesWithoutParentClasses<Side>(requestForClass));
        AllPdmRels.Append(PdmRels);
        AllPdmObjs.Append(PdmObjs);
    }

    *request.pPdmRels = AllPdmRels;
    if (request.pPdmObjs != NULL) {
        *request.pPdmObjs = AllPdmObjs;
    }
    return QTB_SUCCESS;
}

template <class Side>
HRESULT QTBEPdmObjNodeOnPdmObjNode::GetNodesWithoutParentClasses(const Request& request)
{
    QTB_SCOPE(Side::GET_NODES_WITHOUT_PARENT_CLASSES);
    CATListValCATBaseUnknown_var* pPdmRels = request.pPdmRels;
    CATListValCATBaseUnknown_var* pPdmObjs = request.pPdmObjs;
    QTB_ASSERT(pPdmRels != NULL);
    const QTBINodeRelations_var spINodeRelationsOnThis(this);
    QTB_INTERFACE(spINodeRelationsOnThis);
    QTB_RESULT_AS(Side::NODE_LIST_ON_THIS_CALL,
                  ((*spINodeRelationsOnThis).*Side::NODE_LIST)(request.relationName, pPdmRels, request.mode));

    if (pPdmObjs != NULL) {
        if (const HRESULT hr = AppendObjectsOfRelations<Side>(request); FAILED(hr)) {
            return hr;
        }
        QTB_ASSERT(pPdmObjs->Size() == pPdmRels->Size());
        if (request.pObjectClasses != NULL && request.pObjectClasses->Size() > 0) {
            if (const HRESULT hr = KeepObjectsOfClasses(request); FAILED(hr)) {
                return hr;
            }
        }
    }
    if (request.newestVersionsOnly != FALSE && FAILED(QTBPdmGraphUtil::FilterForNewestQtbVersion(pPdmObjs, pPdmRels))) {
        QTB_TRACE(Side::GET_NODES_WITHOUT_PARENT_CLASSES << " -> QTBPdmGraphUtil::FilterForNewestQtbVersion !");
    }
    return QTB_SUCCESS;
}

template <class Side>
HRESULT QTBEPdmObjNodeOnPdmObjNode::AppendObjectsOfRelations(const Request& request)
{
    const CATListValCATBaseUnknown_var PdmRels(*request.pPdmRels);
    for (const CATBaseUnknown_var& spRel : PdmRels) {
        const QTBINodeRelations_var spINodeRelationsOnRel(spRel);
        QTB_INTERFACE(spINodeRelationsOnRel);
        CATListValCATBaseUnknown_var ListOfPdmObjs;
        QTB_RESULT_AS(Side::NODE_LIST_ON_REL_CALL,
                      ((*spINodeRelationsOnRel).*Side::NODE_LIST)(request.relationName, &ListOfPdmObjs, request.mode));
        if (ListOfPdmObjs.Size() != 1) {
            QTB_TRACE(Side::GET_NODES_WITHOUT_PARENT_CLASSES << " -> usRelationName:[" << request.relationName
                                                             << "], ListOfPdmObjs.Size():" << ListOfPdmObjs.Size());
            if (QTBDebugUtil::GetDebugStatus() && request.pObjectClasses != NULL) {
                QTBTraceUtil::PrintStringList(*request.pObjectClasses);
            }
            return QTB_QUIET_FAILURE;
        }
        request.pPdmObjs->Append(ListOfPdmObjs[1]);
    }
    return QTB_SUCCESS;
}

HRESULT QTBEPdmObjNodeOnPdmObjNode::KeepObjectsOfClasses(const Request& request)
{
    // From the last pair to the first, so that of several bad objects the last one is reported.
    CATListValCATBaseUnknown_var PdmRels;
    CATListValCATBaseUnknown_var PdmObjs;
    for (int i = request.pPdmObjs->Size(); i >= 1; --i) {
        const QTBIPdmObjNode_var spIPdmObjNode((*request.pPdmObjs)[i]);
        QTB_INTERFACE(spIPdmObjNode);
        CATUnicodeString usClassName;
        QTB_CALL(spIPdmObjNode->GetClassAttr, &usClassName, NULL);
        if (request.pObjectClasses->Locate(usClassName) > 0) {
            PdmRels.InsertAt(1, (*request.pPdmRels)[i]);
            PdmObjs.InsertAt(1, (*request.pPdmObjs)[i]);
        }
    }
    *request.pPdmRels = PdmRels;
    *request.pPdmObjs = PdmObjs;
    return QTB_SUCCESS;
}

HRESULT QTBEPdmObjNodeOnPdmObjNode::ToXml(CATUnicodeString* pusXml, const CATUnicodeString& usLeadingXml,
                                          const CATUnicodeString& usTagAttributes,
                                          const unsigned char& bWithRightRelations)
{
    QTB_SCOPE("QTBEPdmObjNodeOnPdmObjNode::ToXml");
    const QTBIPdmObjNode_var spIPdmObjNodeOnThis(this);
    QTB_INTERFACE(spIPdmObjNodeOnThis);
    unsigned char bIsPart = FALSE;
    QTB_CALL(QTBPdmGraphUtil::IsPartNode, spIPdmObjNodeOnThis, &bIsPart, NULL, NULL);
    CATUnicodeString usXml = usLeadingXml + "<a name=\"NodeType\">OBJECT</a>";
    if (bWithRightRelations != FALSE && bIsPart != FALSE) {
        usXml += "<rightRelations>";
        CATListValCATBaseUnknown_var RightRelations;
        QTB_CALL(RetrieveAdjacentRelationNodes, &RightRelations, RIGHT);
        for (const CATBaseUnknown_var& spRightRelation : RightRelations) {
            const QTBIPdmRelNode_var spIPdmRelNodeOnRightRelation(spRightRelation);
            QTB_INTERFACE(spIPdmRelNodeOnRightRelation);
            // Without its left object, which is this one.
            QTB_CALL(spIPdmRelNodeOnRightRelation->ToXml, &usXml, "", "", FALSE);
        }
        usXml += "</rightRelations>";
    }
    return QTBEPdmNodeOnPdmNode::ToXml(pusXml, usXml, usTagAttributes, "o");
}

HRESULT QTBEPdmObjNodeOnPdmObjNode::GetClassAttr(CATUnicodeString* pusAttrValue, CATUnicodeString* pusAttrName)
{
    // Traced under the operation's older name; the text is meant.
    QTB_SCOPE("QTBEPdmObjNodeOnPdmObjNode::GetClassName");
    QTB_ASSERT(pusAttrValue != NULL);
    if (m_usClassAttrName.IsEmpty()) {
        QTB_CALL(QTBSchemaUtil::GetClassAttr, &m_usClassAttrName);
    }
    if (pusAttrName != NULL) {
        *pusAttrName = m_usClassAttrName;
    }
    if (m_usClassName.IsEmpty()) {
        const QTBINodeAttributes_var spINodeAttributesOnThis(this);
        QTB_INTERFACE(spINodeAttributesOnThis);
        CATUnicodeString usClassName;
        QTB_CALL(spINodeAttributesOnThis->GetKey, &usClassName);
        if (usClassName != QTBReservedNames::DEFAULT_ROOT_NODE) {
            const QTBIPdmNode_var spIPdmNodeOnThis(this);
            QTB_INTERFACE(spIPdmNodeOnThis);
            if (FAILED(QTBInfoUtil::GetRelevantBaseClassFromPdm(spIPdmNodeOnThis, &usClassName))) {
                QTB_CALL(spINodeAttributesOnThis->GetStringAttributeValue, m_usClassAttrName, &usClassName, FALSE,
                         TRUE);
            }
        }
        m_usClassName = usClassName;
    }
    *pusAttrValue = m_usClassName;
    return QTB_SUCCESS;
}

HRESULT QTBEPdmObjNodeOnPdmObjNode::SetSchemaObjectPtr(QTBSchemaObject* pSchemaObject)
{
    QTB_SCOPE("QTBEPdmObjNodeOnPdmObjNode::SetSchemaObjectPtr");
    QTB_ASSERT(pSchemaObject != NULL);
    m_pSchemaObject = pSchemaObject;
    return QTB_SUCCESS;
}

HRESULT QTBEPdmObjNodeOnPdmObjNode::GetSchemaObjectPtr(QTBSchemaObject** ppSchemaObject)
{
    QTB_SCOPE("QTBEPdmObjNodeOnPdmObjNode::GetSchemaObjectPtr");
    QTB_ASSERT(ppSchemaObject != NULL);
    const QTBINodeAttributes_var spINodeAttributesOnThis(this);
    QTB_INTERFACE(spINodeAttributesOnThis);
    CATUnicodeString usKey;
    QTB_CALL(spINodeAttributesOnThis->GetKey, &usKey);
    if (usKey != QTBReservedNames::DEFAULT_ROOT_NODE) {
        QTB_ASSERT(m_pSchemaObject != NULL);
    }
    *ppSchemaObject = m_pSchemaObject;
    return QTB_SUCCESS;
}

HRESULT QTBEPdmObjNodeOnPdmObjNode::RemoveAllAdjacentPdmRelNodes(const unsigned char& bKeepNodeInContainer,
                                                                 const unsigned char& bInformUser)
{
    QTB_SCOPE("QTBEPdmObjNodeOnPdmObjNode::RemoveAllAdjacentPdmRelNodes");
    CATListValCATBaseUnknown_var RelNodes;
    QTB_CALL(RetrieveAdjacentRelationNodes, &RelNodes, BOTH);
    QTBIPdmNodeCont_var spIPdmNodeCont;
    QTB_CALL(QTBGlobVarsUtil::GetGlobalPdmNodeContainer, &spIPdmNodeCont);
    for (const CATBaseUnknown_var& spRelNode : RelNodes) {
        QTBIPdmNode_var spIPdmNodeOnRelNode(spRelNode);
        QTB_INTERFACE(spIPdmNodeOnRelNode);
        QTB_CALL(spIPdmNodeCont->RemoveNodeFromPdmGraph, &spIPdmNodeOnRelNode, FALSE, bKeepNodeInContainer, bInformUser,
                 NULL);
    }
    return QTB_SUCCESS;
}

HRESULT QTBEPdmObjNodeOnPdmObjNode::RetrieveAdjacentRelationNodes(CATListValCATBaseUnknown_var* pAdjacentRelationNodes,
                                                                  int iDirection)
{
    QTB_SCOPE("QTBEPdmObjNodeOnPdmObjNode::RetrieveAdjacentRelationNodes");
    QTB_ASSERT(pAdjacentRelationNodes != NULL);
    pAdjacentRelationNodes->RemoveAll();
    const QTBINodeRelations_var spINodeRelationsOnThis(this);
    QTB_INTERFACE(spINodeRelationsOnThis);
    HRESULT hr = S_OK;
    if (iDirection == LEFT || iDirection == BOTH) {
        hr = AppendAdjacentRelationNodes<LeftSide>(spINodeRelationsOnThis, pAdjacentRelationNodes);
    }
    if (SUCCEEDED(hr) && (iDirection == RIGHT || iDirection == BOTH)) {
        hr = AppendAdjacentRelationNodes<RightSide>(spINodeRelationsOnThis, pAdjacentRelationNodes);
    }
    return hr;
}

template <class Side>
HRESULT QTBEPdmObjNodeOnPdmObjNode::AppendAdjacentRelationNodes(const QTBINodeRelations_var& spINodeRelationsOnThis,
                                                                CATListValCATBaseUnknown_var* pAdjacentRelationNodes)
{
    CATListValCATUnicodeString RelationNames;
    QTB_RESULT_AS(Side::RELATION_NAMES_CALL, ((*spINodeRelationsOnThis).*Side::RELATION_NAMES)(&RelationNames, TRUE));
    for (const CATUnicodeString& usRelationName : RelationNames) {
        CATListValCATBaseUnknown_var PdmRels;
        CATListValCATBaseUnknown_var PdmObjs;
        QTB_RESULT_AS(
            Side::NODES_CALL,
            GetNodes<Side>({usRelationName, &PdmRels, &PdmObjs, MOST_RECENTLY_UPDATED_NODES, NULL, FALSE}, TRUE));
        pAdjacentRelationNodes->Append(PdmRels);
    }
    return QTB_SUCCESS;
}
