#pragma once

#include "CATTie.h"
#include "QTBIPdmRelNode.h"
#include "TIEQTBIPdmNode.h"

// Interface object of QTBIPdmRelNode; written by tools/generate-ties.
template <class Tie, class Target = CATOwnTarget>
class TIEQTBIPdmRelNode : public TIEQTBIPdmNode<Tie, CATInheritedTarget<QTBIPdmNode>>
{
public:
    using TIEQTBIPdmNode<Tie, CATInheritedTarget<QTBIPdmNode>>::TIEQTBIPdmNode;

    HRESULT SetLeftObject(const QTBIPdmObjNode_var& spLeftObject) override
    {
        return Target::Of(*this)->SetLeftObject(spLeftObject);
    }

    HRESULT SetRightObject(const QTBIPdmObjNode_var& spRightObject) override
    {
        return Target::Of(*this)->SetRightObject(spRightObject);
    }

    HRESULT GetLeftObject(QTBIPdmObjNode_var* pspIPdmObjNode) override
    {
        return Target::Of(*this)->GetLeftObject(pspIPdmObjNode);
    }

    HRESULT GetRightObject(QTBIPdmObjNode_var* pspIPdmObjNode) override
    {
        return Target::Of(*this)->GetRightObject(pspIPdmObjNode);
    }

    HRESULT GetObjectKeys(CATUnicodeString* pusLeftObjKey, CATUnicodeString* pusRightObjKey) override
    {
        return Target::Of(*this)->GetObjectKeys(pusLeftObjKey, pusRightObjKey);
    }

    HRESULT GetRelationAttr(CATUnicodeString* pusAttrValue, CATUnicodeString* pusAttrName) override
    {
        return Target::Of(*this)->GetRelationAttr(pusAttrValue, pusAttrName);
    }

    HRESULT GetLeftRelationshipAttr(CATUnicodeString* pusAttrValue, CATUnicodeString* pusAttrName) override
    {
        return Target::Of(*this)->GetLeftRelationshipAttr(pusAttrValue, pusAttrName);
    }

    HRESULT GetRightRelationshipAttr(CATUnicodeString* pusAttrValue, CATUnicodeString* pusAttrName) override
    {
        return Target::Of(*this)->GetRightRelationshipAttr(pusAttrValue, pusAttrName);
    }

    HRESULT GetLeftRelationClassAttr(CATUnicodeString* pusAttrValue, CATUnicodeString* pusAttrName) override
    {
        return Target::Of(*this)->GetLeftRelationClassAttr(pusAttrValue, pusAttrName);
    }

    HRESULT GetRightRelationClassAttr(CATUnicodeString* pusAttrValue, CATUnicodeString* pusAttrName) override
    {
        return Target::Of(*this)->GetRightRelationClassAttr(pusAttrValue, pusAttrName);
    }

    HRESULT IsA(const CATUnicodeString& usClassName, unsigned char* pbIsA) override
    {
        return Target::Of(*this)->IsA(usClassName, pbIsA);
    }

    HRESULT SetSchemaRelationPtr(QTBSchemaRelation* pSchemaRelation) override
    {
        return Target::Of(*this)->SetSchemaRelationPtr(pSchemaRelation);
    }

    HRESULT GetSchemaRelationPtr(QTBSchemaRelation** ppSchemaRelation) override
    {
        return Target::Of(*this)->GetSchemaRelationPtr(ppSchemaRelation);
    }

    HRESULT ToXml(CATUnicodeString* pusXml, const CATUnicodeString& usLeadingXml, const CATUnicodeString& usTagAttributes, const unsigned char& bWithLeftObject) override
    {
        return Target::Of(*this)->ToXml(pusXml, usLeadingXml, usTagAttributes, bWithLeftObject);
    }
};
