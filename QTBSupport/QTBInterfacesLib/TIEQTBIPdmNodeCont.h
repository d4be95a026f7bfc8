#pragma once

#include "CATTie.h"
#include "QTBIPdmNodeCont.h"

// Interface object of QTBIPdmNodeCont; written by tools/generate-ties.
template <class Tie, class Target = CATOwnTarget>
class TIEQTBIPdmNodeCont : public Tie
{
public:
    using Tie::Tie;

    HRESULT UpdatePdmGraph(const CATIDOMDocument_var& spIDOMDocument, CATListValCATBaseUnknown_var* pReadObjectNodes, CATListValCATBaseUnknown_var* pReadRelationNodes) override
    {
        return Target::Of(*this)->UpdatePdmGraph(spIDOMDocument, pReadObjectNodes, pReadRelationNodes);
    }

    HRESULT UpdatePdmGraph(const CATUnicodeString& usXml, CATListValCATBaseUnknown_var* pReadObjectNodes, CATListValCATBaseUnknown_var* pReadRelationNodes) override
    {
        return Target::Of(*this)->UpdatePdmGraph(usXml, pReadObjectNodes, pReadRelationNodes);
    }

    HRESULT RefreshPdmNode(QTBIPdmNode_var* pspIPdmNodeOnOldNode, QTBIPdmNode_var* pspIPdmNodeOnNewNode) override
    {
        return Target::Of(*this)->RefreshPdmNode(pspIPdmNodeOnOldNode, pspIPdmNodeOnNewNode);
    }

    HRESULT GetPdmRootNodes(CATListValCATBaseUnknown_var* pListOfNodes) override
    {
        return Target::Of(*this)->GetPdmRootNodes(pListOfNodes);
    }

    HRESULT GetAllPdmNodes(CATListValCATBaseUnknown_var* pListOfNodes) override
    {
        return Target::Of(*this)->GetAllPdmNodes(pListOfNodes);
    }

    HRESULT CreateRelationInPdmGraph(const CATUnicodeString& usRelationClass, const QTBIPdmObjNode_var& spLeftObject, const QTBIPdmObjNode_var& spRightObject, const CATUnicodeString& usRelationXml) override
    {
        return Target::Of(*this)->CreateRelationInPdmGraph(usRelationClass, spLeftObject, spRightObject, usRelationXml);
    }

    HRESULT RemoveNodeFromPdmGraph(QTBIPdmNode_var* pspIPdmNode, const unsigned char& bRemoveFromPdmSystem, const unsigned char& bKeepNodeInContainer, const unsigned char& bInformUser, const CATUnicodeString* pusDeleteOption) override
    {
        return Target::Of(*this)->RemoveNodeFromPdmGraph(pspIPdmNode, bRemoveFromPdmSystem, bKeepNodeInContainer, bInformUser, pusDeleteOption);
    }

    HRESULT RemoveNodeFromPdmGraph(const CATUnicodeString& usPdmNodeKey, const unsigned char& bRemoveFromPdmSystem, const unsigned char& bKeepNodeInContainer, const unsigned char& bInformUser, const CATUnicodeString* pusDeleteOption) override
    {
        return Target::Of(*this)->RemoveNodeFromPdmGraph(usPdmNodeKey, bRemoveFromPdmSystem, bKeepNodeInContainer, bInformUser, pusDeleteOption);
    }

    HRESULT GetPdmPartByPartNumber(const CATUnicodeString& usPartNumber, QTBIPdmNode_var* pspIPdmNodeOnPart) override
    {
        return Target::Of(*this)->GetPdmPartByPartNumber(usPartNumber, pspIPdmNodeOnPart);
    }

    HRESULT GetPdmNode(const CATUnicodeString& usClassName, const CATUnicodeString& usAttrName, const CATUnicodeString& usAttrValue, QTBIPdmNode_var* pspIPdmNode) override
    {
        return Target::Of(*this)->GetPdmNode(usClassName, usAttrName, usAttrValue, pspIPdmNode);
    }

    HRESULT GetPdmNodes(CATListValCATUnicodeString* pClassNames, const CATListValCATUnicodeString& PdmAttributeNames, const CATListValCATUnicodeString& PdmAttributeValues, CATListValCATBaseUnknown_var* pPdmNodes) override
    {
        return Target::Of(*this)->GetPdmNodes(pClassNames, PdmAttributeNames, PdmAttributeValues, pPdmNodes);
    }

    HRESULT GetPdmNodes(const CATUnicodeString& usClassName, const CATUnicodeString& usAttrName, const CATUnicodeString& usAttrValue, CATListValCATBaseUnknown_var* pPdmNodes) override
    {
        return Target::Of(*this)->GetPdmNodes(usClassName, usAttrName, usAttrValue, pPdmNodes);
    }

    HRESULT GetPdmNodeByKey(const CATUnicodeString& usKey, QTBIPdmNode_var* pspIPdmNode, unsigned char* pbNodeFound) override
    {
        return Target::Of(*this)->GetPdmNodeByKey(usKey, pspIPdmNode, pbNodeFound);
    }

    HRESULT CreatePdmObjNode(const CATUnicodeString& usKey, CATBaseUnknown_var* pspBaseUnknownOnNewNode, const unsigned char& bAddToContainer) override
    {
        return Target::Of(*this)->CreatePdmObjNode(usKey, pspBaseUnknownOnNewNode, bAddToContainer);
    }

    HRESULT CreatePdmRelNode(const CATUnicodeString& usKey, CATBaseUnknown_var* pspBaseUnknownOnNewNode, const unsigned char& bAddToContainer) override
    {
        return Target::Of(*this)->CreatePdmRelNode(usKey, pspBaseUnknownOnNewNode, bAddToContainer);
    }

    HRESULT AddRepNodeContainer(CATBaseUnknown_var* pspBaseUnknownOnRepNodeCont) override
    {
        return Target::Of(*this)->AddRepNodeContainer(pspBaseUnknownOnRepNodeCont);
    }

    HRESULT RemoveRepNodeContainer(CATBaseUnknown_var* pspBaseUnknownOnRepNodeCont) override
    {
        return Target::Of(*this)->RemoveRepNodeContainer(pspBaseUnknownOnRepNodeCont);
    }

    HRESULT UpdateAllRepNodeContainers(unsigned char* pbAddNewNodes) override
    {
        return Target::Of(*this)->UpdateAllRepNodeContainers(pbAddNewNodes);
    }

    HRESULT CheckRepNodeContainers() override
    {
        return Target::Of(*this)->CheckRepNodeContainers();
    }

    HRESULT Cleanup() override
    {
        return Target::Of(*this)->Cleanup();
    }

    HRESULT CreateDefaultRootNode() override
    {
        return Target::Of(*this)->CreateDefaultRootNode();
    }

    HRESULT RemoveDefaultRootNode() override
    {
        return Target::Of(*this)->RemoveDefaultRootNode();
    }
};
