#include "QTBEPdmRelNodeOnPdmRelNode.h"

#include "CATIDOMElement.h"
#include "QTBCheck.h"
#include "QTBINodeAttributes.h"
#include "QTBINodeRelations.h"
#include "QTBIPdmObjNode.h"
#include "QTBIPdmRelNode.h"
#include "QTBPdmGraphUtil.h"
#include "QTBSchemaUtil.h"
#include "QTBXmlUtil.h"

namespace {

// The two sides: which operations of the interfaces belong to a side, and its texts.
struct LeftSide
{
    static constexpr const char* SET_OBJECT = "QTBEPdmRelNodeOnPdmRelNode::SetLeftObject";
    static constexpr const char* GET_OBJECT = "QTBEPdmRelNodeOnPdmRelNode::GetLeftObject";

    static constexpr const char* OBJECT_CALL = "GetLeftObject";
    static constexpr const char* NODE_LIST_CALL = "spINodeRelationsOnThis->GetLeftNodeList";
    // The getter's text for the setter is meant.
    static constexpr const char* SET_NODE_LIST_CALL = NODE_LIST_CALL;
    static constexpr const char* HAS_ONE_NODE = "LeftNodes.Size() == 1";
    // Stands for a missing interface and for a failing GetKey alike.
    static constexpr const char* OBJECT_ATTRIBUTES = "spINodeAttributesOnLeftObj";

    static constexpr auto NODE_LIST = &QTBINodeRelations::GetLeftNodeList;
    static constexpr auto SET_NODE_LIST = &QTBINodeRelations::SetLeftNodeList;
};

struct RightSide
{
    static constexpr const char* SET_OBJECT = "QTBEPdmRelNodeOnPdmRelNode::SetRightObject";
    static constexpr const char* GET_OBJECT = "QTBEPdmRelNodeOnPdmRelNode::GetRightObject";

    static constexpr const char* OBJECT_CALL = "GetRightObject";
    static constexpr const char* NODE_LIST_CALL = "spINodeRelationsOnThis->GetRightNodeList";
    // The getter's text for the setter is meant.
    static constexpr const char* SET_NODE_LIST_CALL = NODE_LIST_CALL;
    static constexpr const char* HAS_ONE_NODE = "RightNodes.Size() == 1";
    // Stands for a missing interface and for a failing GetKey alike.
    static constexpr const char* OBJECT_ATTRIBUTES = "spINodeAttributesOnRightObj";

    static constexpr auto NODE_LIST = &QTBINodeRelations::GetRightNodeList;
    static constexpr auto SET_NODE_LIST = &QTBINodeRelations::SetRightNodeList;
};

// The attributes that the schema names: who gives the name, and the texts.
struct Relation
{
    static constexpr const char* SCOPE = "QTBEPdmRelNodeOnPdmRelNode::GetRelationAttr";
    static constexpr const char* NAME_CALL = "QTBSchemaUtil::GetRelationAttr";
    static constexpr auto GET_NAME = &QTBSchemaUtil::GetRelationAttr;
};

struct LeftRelationship
{
    static constexpr const char* SCOPE = "QTBEPdmRelNodeOnPdmRelNode::GetLeftRelationshipAttr";
    // The doubled "Get" is meant.
    static constexpr const char* NAME_CALL = "QTBSchemaUtil::GetGetLeftRelationshipAttr";
    static constexpr auto GET_NAME = &QTBSchemaUtil::GetLeftRelationshipAttr;
};

struct RightRelationship
{
    static constexpr const char* SCOPE = "QTBEPdmRelNodeOnPdmRelNode::GetRightRelationshipAttr";
    // The doubled "Get" is meant.
    static constexpr const char* NAME_CALL = "QTBSchemaUtil::GetGetRightRelationshipAttr";
    static constexpr auto GET_NAME = &QTBSchemaUtil::GetRightRelationshipAttr;
};

struct LeftRelationClass
{
    static constexpr const char* SCOPE = "QTBEPdmRelNodeOnPdmRelNode::GetLeftRelationClassAttr";
    static constexpr const char* NAME_CALL = "QTBSchemaUtil::GetLeftRelationClassAttribute";
    static constexpr auto GET_NAME = &QTBSchemaUtil::GetLeftRelationClassAttribute;
};

struct RightRelationClass
{
    static constexpr const char* SCOPE = "QTBEPdmRelNodeOnPdmRelNode::GetRightRelationClassAttr";
    static constexpr const char* NAME_CALL = "QTBSchemaUtil::GetRightRelationClassAttribute";
    static constexpr auto GET_NAME = &QTBSchemaUtil::GetRightRelationClassAttribute;
};

} // namespace

HRESULT QTBEPdmRelNodeOnPdmRelNode::SetLeftObject(const QTBIPdmObjNode_var& spLeftObject)
{
    return SetObject<LeftSide>(spLeftObject);
}

HRESULT QTBEPdmRelNodeOnPdmRelNode::SetRightObject(const QTBIPdmObjNode_var& spRightObject)
{
    return SetObject<RightSide>(spRightObject);
}

HRESULT QTBEPdmRelNodeOnPdmRelNode::GetLeftObject(QTBIPdmObjNode_var* pspIPdmObjNode)
{
    return GetObject<LeftSide>(pspIPdmObjNode);
}

HRESULT QTBEPdmRelNodeOnPdmRelNode::GetRightObject(QTBIPdmObjNode_var* pspIPdmObjNode)
{
    return GetObject<RightSide>(pspIPdmObjNode);
}

template <class Side>
HRESULT QTBEPdmRelNodeOnPdmRelNode::SetObject(const QTBIPdmObjNode_var& spObject)
{
    QTB_SCOPE(Side::SET_OBJECT);
    CATUnicodeString usRelationName;
    QTB_CALL(GetRelationAttr, &usRelationName, NULL);
    const QTBINodeRelations_var spINodeRelationsOnThis(this);
    QTB_INTERFACE(spINodeRelationsOnThis);
    CATListValCATBaseUnknown_var Objects;
    Objects.Append(spObject);
    QTB_RESULT_AS(Side::SET_NODE_LIST_CALL, ((*spINodeRelationsOnThis).*Side::SET_NODE_LIST)(usRelationName, Objects));
    return QTB_SUCCESS;
}

template <class Side>
HRESULT QTBEPdmRelNodeOnPdmRelNode::GetObject(QTBIPdmObjNode_var* pspIPdmObjNode)
{
    QTB_SCOPE(Side::GET_OBJECT);
    QTB_ASSERT(pspIPdmObjNode != NULL);
    CATUnicodeString usRelationName;
    QTB_CALL(GetRelationAttr, &usRelationName, NULL);
    const QTBINodeRelations_var spINodeRelationsOnThis(this);
    QTB_INTERFACE(spINodeRelationsOnThis);
    CATListValCATBaseUnknown_var Nodes;
    QTB_RESULT_AS(Side::NODE_LIST_CALL,
                  ((*spINodeRelationsOnThis).*Side::NODE_LIST)(usRelationName, &Nodes, MOST_RECENTLY_UPDATED_NODES));
    QTB_ASSERT_AS(Side::HAS_ONE_NODE, Nodes.Size() == 1);
    *pspIPdmObjNode = Nodes[1];
    QTB_INTERFACE(*pspIPdmObjNode);
    return QTB_SUCCESS;
}

HRESULT QTBEPdmRelNodeOnPdmRelNode::GetObjectKeys(CATUnicodeString* pusLeftObjKey, CATUnicodeString* pusRightObjKey)
{
    QTB_SCOPE("QTBEPdmRelNodeOnPdmRelNode::GetObjectKeys");
    QTB_ASSERT(pusLeftObjKey != NULL);
    QTB_ASSERT(pusRightObjKey != NULL);
    const HRESULT hr = GetObjectKey<LeftSide>(pusLeftObjKey);
    return FAILED(hr) ? hr : GetObjectKey<RightSide>(pusRightObjKey);
}

template <class Side>
HRESULT QTBEPdmRelNodeOnPdmRelNode::GetObjectKey(CATUnicodeString* pusKey)
{
    QTBIPdmObjNode_var spIPdmObjNode;
    QTB_RESULT_AS(Side::OBJECT_CALL, GetObject<Side>(&spIPdmObjNode));
    const QTBINodeAttributes_var spINodeAttributes(spIPdmObjNode);
    QTB_INTERFACE_AS(Side::OBJECT_ATTRIBUTES, spINodeAttributes);
    QTB_RESULT_AS(Side::OBJECT_ATTRIBUTES, spINodeAttributes->GetKey(pusKey));
    return QTB_SUCCESS;
}

HRESULT QTBEPdmRelNodeOnPdmRelNode::GetRelationAttr(CATUnicodeString* pusAttrValue, CATUnicodeString* pusAttrName)
{
    return GetSchemaAttr<Relation>(pusAttrValue, pusAttrName);
}

HRESULT QTBEPdmRelNodeOnPdmRelNode::GetLeftRelationshipAttr(CATUnicodeString* pusAttrValue,
                                                            CATUnicodeString* pusAttrName)
{
    return GetSchemaAttr<LeftRelationship>(pusAttrValue, pusAttrName);
}

HRESULT QTBEPdmRelNodeOnPdmRelNode::GetRightRelationshipAttr(CATUnicodeString* pusAttrValue,
                                                             CATUnicodeString* pusAttrName)
{
    return GetSchemaAttr<RightRelationship>(pusAttrValue, pusAttrName);
}

HRESULT QTBEPdmRelNodeOnPdmRelNode::GetLeftRelationClassAttr(CATUnicodeString* pusAttrValue,
                                                             CATUnicodeString* pusAttrName)
{
    return GetSchemaAttr<LeftRelationClass>(pusAttrValue, pusAttrName);
}

HRESULT QTBEPdmRelNodeOnPdmRelNode::GetRightRelationClassAttr(CATUnicodeString* pusAttrValue,
                                                              CATUnicodeString* pusAttrName)
{
    return GetSchemaAttr<RightRelationClass>(pusAttrValue, pusAttrName);
}

template <class Attribute>
HRESULT QTBEPdmRelNodeOnPdmRelNode::GetSchemaAttr(CATUnicodeString* pusAttrValue, CATUnicodeString* pusAttrName)
{
    QTB_SCOPE(Attribute::SCOPE);
    QTB_ASSERT(pusAttrValue != NULL);
    CATUnicodeString usAttrName;
    QTB_RESULT_AS(Attribute::NAME_CALL, Attribute::GET_NAME(&usAttrName));
    if (pusAttrName != NULL) {
        *pusAttrName = usAttrName;
    }
    const QTBINodeAttributes_var spINodeAttributesOnThis(this);
    QTB_INTERFACE(spINodeAttributesOnThis);
    QTB_CALL(spINodeAttributesOnThis->GetStringAttributeValue, usAttrName, pusAttrValue, FALSE, TRUE);
    return QTB_SUCCESS;
}

HRESULT QTBEPdmRelNodeOnPdmRelNode::IsA(const CATUnicodeString& usClassName, unsigned char* pbIsA)
{
    QTB_SCOPE("QTBEPdmRelNodeOnPdmRelNode::IsA");
    QTB_ASSERT(pbIsA != NULL);
    CATUnicodeString usRelationName;
    QTB_CALL(GetRelationAttr, &usRelationName, NULL);
    if (usRelationName == usClassName) {
        *pbIsA = TRUE;
        return QTB_SUCCESS;
    }
    CATListValCATUnicodeString ParentClasses;
    QTB_CALL(GetParentClasses, &ParentClasses);
    *pbIsA = ParentClasses.Locate(usClassName) > 0 ? TRUE : FALSE;
    return QTB_SUCCESS;
}

HRESULT QTBEPdmRelNodeOnPdmRelNode::GetParentClasses(CATListValCATUnicodeString* pParentClasses)
{
    QTB_SCOPE("QTBEPdmRelNodeOnPdmRelNode::GetParentClasses");
    QTB_ASSERT(pParentClasses != NULL);
    pParentClasses->RemoveAll();
    if (m_bParentClassesRead == FALSE) {
        const QTBINodeAttributes_var spINodeAttributesOnThis(this);
        QTB_INTERFACE(spINodeAttributesOnThis);
        CATBaseUnknown_var spXmlElement;
        QTB_CALL(spINodeAttributesOnThis->GetXmlElement, &spXmlElement);
        CATListValCATBaseUnknown_var ChildXmlNodes;
        QTB_CALL(QTBXmlUtil::GetElements, spXmlElement, "parentClasses", "", "", &ChildXmlNodes);
        const int ChildXmlNodeSize = ChildXmlNodes.Size();
        QTB_ASSERT(ChildXmlNodeSize <= 1);
        if (ChildXmlNodeSize == 0) {
            // Deliberately not remembered: the record is looked at again by the next call.
            return QTB_SUCCESS;
        }
        const CATIDOMElement_var spIDOMElementOnParentClassesTag(ChildXmlNodes[1]);
        QTB_INTERFACE(spIDOMElementOnParentClassesTag);
        QTB_CALL(QTBXmlUtil::GetRecurringElementCharData, spIDOMElementOnParentClassesTag, "class", &m_ParentClasses);
        m_bParentClassesRead = TRUE;
    }
    if (m_ParentClasses.Size() > 0) {
        *pParentClasses = m_ParentClasses;
    }
    return QTB_SUCCESS;
}

HRESULT QTBEPdmRelNodeOnPdmRelNode::SetSchemaRelationPtr(QTBSchemaRelation* pSchemaRelation)
{
    QTB_SCOPE("QTBEPdmRelNodeOnPdmRelNode::SetSchemaRelationPtr");
    QTB_ASSERT(pSchemaRelation != NULL);
    m_pSchemaRelation = pSchemaRelation;
    return QTB_SUCCESS;
}

HRESULT QTBEPdmRelNodeOnPdmRelNode::GetSchemaRelationPtr(QTBSchemaRelation** ppSchemaRelation)
{
    QTB_SCOPE("QTBEPdmRelNodeOnPdmRelNode::GetSchemaRelationPtr");
    QTB_ASSERT(ppSchemaRelation != NULL);
    QTB_ASSERT(m_pSchemaRelation != NULL);
    *ppSchemaRelation = m_pSchemaRelation;
    return QTB_SUCCESS;
}

HRESULT QTBEPdmRelNodeOnPdmRelNode::ToXml(CATUnicodeString* pusXml, const CATUnicodeString& usLeadingXml,
                                          const CATUnicodeString&, const unsigned char& bWithLeftObject)
{
    QTB_SCOPE("QTBEPdmRelNodeOnPdmRelNode::ToXml");
    const QTBIPdmRelNode_var spIPdmRelNodeOnThis(this);
    QTB_INTERFACE(spIPdmRelNodeOnThis);
    QTBIPdmObjNode_var spIPdmObjNodeOnLeftObj;
    QTB_CALL(spIPdmRelNodeOnThis->GetLeftObject, &spIPdmObjNodeOnLeftObj);
    unsigned char bLeftIsPart = FALSE;
    QTB_CALL(QTBPdmGraphUtil::IsPartNode, spIPdmObjNodeOnLeftObj, &bLeftIsPart, NULL, NULL);
    CATUnicodeString usXml = usLeadingXml + "<a name=\"NodeType\">RELATION</a>";
    if (bWithLeftObject != FALSE && bLeftIsPart != FALSE) {
        usXml += "<leftObject>";
        // The object writes its right relations without their left object, so the nesting ends there.
        QTB_CALL(spIPdmObjNodeOnLeftObj->ToXml, &usXml, "", "", TRUE);
        usXml += "</leftObject>";
    }
    // The relation's tag attributes are deliberately not passed on.
    return QTBEPdmNodeOnPdmNode::ToXml(pusXml, usXml, "", "r");
}
