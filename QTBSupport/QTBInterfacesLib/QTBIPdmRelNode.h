#pragma once

#include "QTBIPdmNode.h"

class QTBIPdmObjNode;
class QTBSchemaRelation;
using QTBIPdmObjNode_var = CATInterface_var<QTBIPdmObjNode>;

inline constexpr IID IID_QTBIPdmRelNode{"QTBIPdmRelNode"};

// One relation of the PDM system between two objects.
class QTBINTERFACESLIB_API QTBIPdmRelNode : public QTBIPdmNode
{
    CATDeclareInterface(QTBIPdmRelNode, QTBIPdmNode)

public:
    virtual HRESULT SetLeftObject(const QTBIPdmObjNode_var& spLeftObject) = 0;
    virtual HRESULT SetRightObject(const QTBIPdmObjNode_var& spRightObject) = 0;
    // Each fails when the relation has not exactly one object on that side.
    virtual HRESULT GetLeftObject(QTBIPdmObjNode_var* pspIPdmObjNode) = 0;
    virtual HRESULT GetRightObject(QTBIPdmObjNode_var* pspIPdmObjNode) = 0;
    virtual HRESULT GetObjectKeys(CATUnicodeString* pusLeftObjKey, CATUnicodeString* pusRightObjKey) = 0;

    // Attributes that the schema names: their value and their name, which may be null. GetRelationAttr gives the
    // relation's class, which is also the name under which it is linked to its objects.
    virtual HRESULT GetRelationAttr(CATUnicodeString* pusAttrValue, CATUnicodeString* pusAttrName) = 0;
    virtual HRESULT GetLeftRelationshipAttr(CATUnicodeString* pusAttrValue, CATUnicodeString* pusAttrName) = 0;
    virtual HRESULT GetRightRelationshipAttr(CATUnicodeString* pusAttrValue, CATUnicodeString* pusAttrName) = 0;
    virtual HRESULT GetLeftRelationClassAttr(CATUnicodeString* pusAttrValue, CATUnicodeString* pusAttrName) = 0;
    virtual HRESULT GetRightRelationClassAttr(CATUnicodeString* pusAttrValue, CATUnicodeString* pusAttrName) = 0;

    // Whether the relation is of that class or the class is one of its parent classes.
    virtual HRESULT IsA(const CATUnicodeString& usClassName, unsigned char* pbIsA) = 0;

    virtual HRESULT SetSchemaRelationPtr(QTBSchemaRelation* pSchemaRelation) = 0;
    virtual HRESULT GetSchemaRelationPtr(QTBSchemaRelation** ppSchemaRelation) = 0;

    // Appends the relation as an "r" element with its identifying attributes, and its left object when asked to and
    // when that is a part.
    virtual HRESULT ToXml(CATUnicodeString* pusXml, const CATUnicodeString& usLeadingXml,
                          const CATUnicodeString& usTagAttributes, const unsigned char& bWithLeftObject) = 0;
};

using QTBIPdmRelNode_var = CATInterface_var<QTBIPdmRelNode>;
