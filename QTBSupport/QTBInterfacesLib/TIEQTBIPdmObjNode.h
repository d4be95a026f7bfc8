#pragma once

#include "CATTie.h"
#include "QTBIPdmObjNode.h"
#include "TIEQTBIPdmNode.h"

// Interface object of QTBIPdmObjNode; written by tools/generate-ties.
template <class Tie, class Target = CATOwnTarget>
class TIEQTBIPdmObjNode : public TIEQTBIPdmNode<Tie, CATInheritedTarget<QTBIPdmNode>>
{
public:
    using TIEQTBIPdmNode<Tie, CATInheritedTarget<QTBIPdmNode>>::TIEQTBIPdmNode;

    HRESULT IsPdmRootNode(unsigned char* pbIsPdmRootNode) override
    {
        return Target::Of(*this)->IsPdmRootNode(pbIsPdmRootNode);
    }

    HRESULT GetRightNodes(const CATUnicodeString& usRelationName, CATListValCATBaseUnknown_var* pPdmRels, CATListValCATBaseUnknown_var* pPdmObjs, const NodesToRetrieve& mode, const unsigned char& bIncludeRelationSubclasses, CATListValCATUnicodeString* pObjectClasses, const unsigned char& bNewestVersionsOnly) override
    {
        return Target::Of(*this)->GetRightNodes(usRelationName, pPdmRels, pPdmObjs, mode, bIncludeRelationSubclasses, pObjectClasses, bNewestVersionsOnly);
    }

    HRESULT GetLeftNodes(const CATUnicodeString& usRelationName, CATListValCATBaseUnknown_var* pPdmRels, CATListValCATBaseUnknown_var* pPdmObjs, const NodesToRetrieve& mode, const unsigned char& bIncludeRelationSubclasses, CATListValCATUnicodeString* pObjectClasses, const unsigned char& bNewestVersionsOnly) override
    {
        return Target::Of(*this)->GetLeftNodes(usRelationName, pPdmRels, pPdmObjs, mode, bIncludeRelationSubclasses, pObjectClasses, bNewestVersionsOnly);
    }

    HRESULT ToXml(CATUnicodeString* pusXml, const CATUnicodeString& usLeadingXml, const CATUnicodeString& usTagAttributes, const unsigned char& bWithRightRelations) override
    {
        return Target::Of(*this)->ToXml(pusXml, usLeadingXml, usTagAttributes, bWithRightRelations);
    }

    HRESULT GetClassAttr(CATUnicodeString* pusAttrValue, CATUnicodeString* pusAttrName) override
    {
        return Target::Of(*this)->GetClassAttr(pusAttrValue, pusAttrName);
    }

    HRESULT SetSchemaObjectPtr(QTBSchemaObject* pSchemaObject) override
    {
        return Target::Of(*this)->SetSchemaObjectPtr(pSchemaObject);
    }

    HRESULT GetSchemaObjectPtr(QTBSchemaObject** ppSchemaObject) override
    {
        return Target::Of(*this)->GetSchemaObjectPtr(ppSchemaObject);
    }

    HRESULT RemoveAllAdjacentPdmRelNodes(const unsigned char& bKeepNodeInContainer, const unsigned char& bInformUser) override
    {
        return Target::Of(*this)->RemoveAllAdjacentPdmRelNodes(bKeepNodeInContainer, bInformUser);
    }

    HRESULT RetrieveAdjacentRelationNodes(CATListValCATBaseUnknown_var* pAdjacentRelationNodes, int iDirection) override
    {
        return Target::Of(*this)->RetrieveAdjacentRelationNodes(pAdjacentRelationNodes, iDirection);
    }
};
