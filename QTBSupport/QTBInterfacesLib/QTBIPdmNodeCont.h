#pragma once

#include "CATListValCATBaseUnknown_var.h"
#include "CATListValCATUnicodeString.h"
#include "QTBInterfacesLibExport.h"

class CATIDOMDocument;
class QTBIPdmNode;
class QTBIPdmObjNode;
using CATIDOMDocument_var = CATInterface_var<CATIDOMDocument>;
using QTBIPdmNode_var = CATInterface_var<QTBIPdmNode>;
using QTBIPdmObjNode_var = CATInterface_var<QTBIPdmObjNode>;

inline constexpr IID IID_QTBIPdmNodeCont{"QTBIPdmNodeCont"};

// The session's PDM graph: owns every PDM node and is their only creator.
class QTBINTERFACESLIB_API QTBIPdmNodeCont : public CATBaseUnknown
{
    CATDeclareInterface(QTBIPdmNodeCont, CATBaseUnknown)

public:
    // Reads a PDM answer: creates or replaces the nodes of its objects and relations, lets superseding items take the
    // place of the old ones, links relations to their objects and removes what the answer lists for deletion. The lists
    // (each may be null) receive the nodes read, in document order. A failure stops the update where it occurs; nodes
    // created before it stay. An empty document or text only starts a new action.
    virtual HRESULT UpdatePdmGraph(const CATIDOMDocument_var& spIDOMDocument,
                                   CATListValCATBaseUnknown_var* pReadObjectNodes,
                                   CATListValCATBaseUnknown_var* pReadRelationNodes) = 0;
    virtual HRESULT UpdatePdmGraph(const CATUnicodeString& usXml, CATListValCATBaseUnknown_var* pReadObjectNodes,
                                   CATListValCATBaseUnknown_var* pReadRelationNodes) = 0;

    // The node that the graph holds now under the key of a node that an update may have replaced.
    virtual HRESULT RefreshPdmNode(QTBIPdmNode_var* pspIPdmNodeOnOldNode, QTBIPdmNode_var* pspIPdmNodeOnNewNode) = 0;

    // The object nodes that are roots of the graph, and all nodes, in bucket order. The lists are replaced.
    virtual HRESULT GetPdmRootNodes(CATListValCATBaseUnknown_var* pListOfNodes) = 0;
    virtual HRESULT GetAllPdmNodes(CATListValCATBaseUnknown_var* pListOfNodes) = 0;

    // Has the PDM system create a relation and reads its answer. usRelationXml is the inner XML of the new relation.
    virtual HRESULT CreateRelationInPdmGraph(const CATUnicodeString& usRelationClass,
                                             const QTBIPdmObjNode_var& spLeftObject,
                                             const QTBIPdmObjNode_var& spRightObject,
                                             const CATUnicodeString& usRelationXml) = 0;

    // Removes a node, its adjacent relations and the rep trees that show it; with bRemoveFromPdmSystem only after the
    // PDM system has deleted the item. bKeepNodeInContainer keeps the bare node. With bInformUser the information list
    // tells which products lost their rep node. pusDeleteOption goes to the communication service and may be null.
    virtual HRESULT RemoveNodeFromPdmGraph(QTBIPdmNode_var* pspIPdmNode, const unsigned char& bRemoveFromPdmSystem,
                                           const unsigned char& bKeepNodeInContainer, const unsigned char& bInformUser,
                                           const CATUnicodeString* pusDeleteOption) = 0;
    virtual HRESULT RemoveNodeFromPdmGraph(const CATUnicodeString& usPdmNodeKey,
                                           const unsigned char& bRemoveFromPdmSystem,
                                           const unsigned char& bKeepNodeInContainer, const unsigned char& bInformUser,
                                           const CATUnicodeString* pusDeleteOption) = 0;

    // Fails with an error when no part has that number.
    virtual HRESULT GetPdmPartByPartNumber(const CATUnicodeString& usPartNumber,
                                           QTBIPdmNode_var* pspIPdmNodeOnPart) = 0;
    // The node of that class with that attribute value; of several the one of the newest action. None: quiet failure.
    virtual HRESULT GetPdmNode(const CATUnicodeString& usClassName, const CATUnicodeString& usAttrName,
                               const CATUnicodeString& usAttrValue, QTBIPdmNode_var* pspIPdmNode) = 0;
    // All nodes of the classes whose attributes have the values, in bucket order.
    virtual HRESULT GetPdmNodes(CATListValCATUnicodeString* pClassNames,
                                const CATListValCATUnicodeString& PdmAttributeNames,
                                const CATListValCATUnicodeString& PdmAttributeValues,
                                CATListValCATBaseUnknown_var* pPdmNodes) = 0;
    virtual HRESULT GetPdmNodes(const CATUnicodeString& usClassName, const CATUnicodeString& usAttrName,
                                const CATUnicodeString& usAttrValue, CATListValCATBaseUnknown_var* pPdmNodes) = 0;
    // An absent key is no failure: the handle is empty then, and the flag FALSE.
    virtual HRESULT GetPdmNodeByKey(const CATUnicodeString& usKey, QTBIPdmNode_var* pspIPdmNode,
                                    unsigned char* pbNodeFound) = 0;

    // Creates a node with that key; looks for no other node of the same key.
    virtual HRESULT CreatePdmObjNode(const CATUnicodeString& usKey, CATBaseUnknown_var* pspBaseUnknownOnNewNode,
                                     const unsigned char& bAddToContainer) = 0;
    virtual HRESULT CreatePdmRelNode(const CATUnicodeString& usKey, CATBaseUnknown_var* pspBaseUnknownOnNewNode,
                                     const unsigned char& bAddToContainer) = 0;

    // Registry of the rep node containers of the open PDM windows.
    virtual HRESULT AddRepNodeContainer(CATBaseUnknown_var* pspBaseUnknownOnRepNodeCont) = 0;
    virtual HRESULT RemoveRepNodeContainer(CATBaseUnknown_var* pspBaseUnknownOnRepNodeCont) = 0;
    // Lets every registered container follow the graph; called after each update.
    virtual HRESULT UpdateAllRepNodeContainers(unsigned char* pbAddNewNodes) = 0;
    // Cleans up and forgets the containers whose window is gone.
    virtual HRESULT CheckRepNodeContainers() = 0;

    // Empties the graph and the registry; the container stays usable.
    virtual HRESULT Cleanup() = 0;

    // The placeholder root, "DEFAULT_ROOT_NODE", that stands for the graph until the first update.
    virtual HRESULT CreateDefaultRootNode() = 0;
    virtual HRESULT RemoveDefaultRootNode() = 0;
};

using QTBIPdmNodeCont_var = CATInterface_var<QTBIPdmNodeCont>;
