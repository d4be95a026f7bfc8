#pragma once

#include "CATListValCATUnicodeString.h"
#include "CATUnicodeString.h"
#include "QTBEPdmNodeOnPdmNode.h"

class QTBIPdmObjNode;
class QTBSchemaRelation;
using QTBIPdmObjNode_var = CATInterface_var<QTBIPdmObjNode>;

// QTBIPdmRelNode on the late type QTBPdmRelNode: one relation of the PDM system between two objects. The relation's
// class is also the name under which it is linked to its objects. The slots inherited from QTBIPdmNode are answered by
// the component's own QTBIPdmNode.
class QTBEPdmRelNodeOnPdmRelNode : public QTBEPdmNodeOnPdmNode
{
public:
    QTBEPdmRelNodeOnPdmRelNode() = default;

    // Makes the object the only one on that side of the relation.
    HRESULT SetLeftObject(const QTBIPdmObjNode_var& spLeftObject);
    HRESULT SetRightObject(const QTBIPdmObjNode_var& spRightObject);

    // The object on that side. Fails unless there is exactly one.
    HRESULT GetLeftObject(QTBIPdmObjNode_var* pspIPdmObjNode);
    HRESULT GetRightObject(QTBIPdmObjNode_var* pspIPdmObjNode);

    // The node keys of both objects.
    HRESULT GetObjectKeys(CATUnicodeString* pusLeftObjKey, CATUnicodeString* pusRightObjKey);

    // The value of an attribute that the schema names and, when pusAttrName is given, its name. Fails when the node has
    // no such attribute.
    HRESULT GetRelationAttr(CATUnicodeString* pusAttrValue, CATUnicodeString* pusAttrName);
    HRESULT GetLeftRelationshipAttr(CATUnicodeString* pusAttrValue, CATUnicodeString* pusAttrName);
    HRESULT GetRightRelationshipAttr(CATUnicodeString* pusAttrValue, CATUnicodeString* pusAttrName);
    HRESULT GetLeftRelationClassAttr(CATUnicodeString* pusAttrValue, CATUnicodeString* pusAttrName);
    HRESULT GetRightRelationClassAttr(CATUnicodeString* pusAttrValue, CATUnicodeString* pusAttrName);

    // Whether that is the relation's class or one of its parent classes. The comparison is exact.
    HRESULT IsA(const CATUnicodeString& usClassName, unsigned char* pbIsA);

    // The parent classes named in the relation's record, nearest first; none when the record names none. Fails when
    // the record has more than one element of them. Read once, unless the record has none.
    HRESULT GetParentClasses(CATListValCATUnicodeString* pParentClasses);

    // The relation's class in the current schema, owned by the schema. Reading it before it was set fails.
    HRESULT SetSchemaRelationPtr(QTBSchemaRelation* pSchemaRelation);
    HRESULT GetSchemaRelationPtr(QTBSchemaRelation** ppSchemaRelation);

    // Appends the relation as an "r" element: leading XML, node type and, when asked to and when it is a part, the left
    // object with its right relations. The tag attributes are not written, unlike those of an object.
    HRESULT ToXml(CATUnicodeString* pusXml, const CATUnicodeString& usLeadingXml,
                  const CATUnicodeString& usTagAttributes, const unsigned char& bWithLeftObject);

private:
    // One body for both sides and for all attribute getters; a side or an attribute owns its operations and texts.
    template <class Side>
    HRESULT SetObject(const QTBIPdmObjNode_var& spObject);
    template <class Side>
    HRESULT GetObject(QTBIPdmObjNode_var* pspIPdmObjNode);
    template <class Side>
    HRESULT GetObjectKey(CATUnicodeString* pusKey);
    template <class Attribute>
    HRESULT GetSchemaAttr(CATUnicodeString* pusAttrValue, CATUnicodeString* pusAttrName);

    unsigned char m_bParentClassesRead = FALSE;
    CATListValCATUnicodeString m_ParentClasses;
    QTBSchemaRelation* m_pSchemaRelation = NULL;
};
