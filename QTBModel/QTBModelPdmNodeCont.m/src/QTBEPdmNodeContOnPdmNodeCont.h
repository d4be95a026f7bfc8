#pragma once

#include <unordered_map>

#include "CATListValCATBaseUnknown_var.h"
#include "CATListValCATUnicodeString.h"
#include "CATUnicodeString.h"
#include "QTBNodeContainer.h"

class CATIDOMDocument;
class QTBIPdmNode;
class QTBIPdmNodeCont;
class QTBIPdmObjNode;
class QTBIPdmRelNode;
class QTBSchema;
using CATIDOMDocument_var = CATInterface_var<CATIDOMDocument>;
using CATIDOMElement_var = CATInterface_var<CATIDOMElement>;
using QTBIPdmNode_var = CATInterface_var<QTBIPdmNode>;
using QTBIPdmObjNode_var = CATInterface_var<QTBIPdmObjNode>;
using QTBIPdmRelNode_var = CATInterface_var<QTBIPdmRelNode>;

// QTBIPdmNodeCont on the late type QTBPdmNodeCont: the session's PDM graph. Owns every PDM node in the keyed store of
// its base, turns PDM answers into nodes and knows the rep node containers of the open PDM windows.
//
// Its sources: QTBEPdmNodeContOnPdmNodeCont.cpp (creation and look-up), ...Update.cpp (reading an answer),
// ...Link.cpp (supersession, relation linking, refresh) and ...Remove.cpp (removal, clean-up, registry).
class QTBEPdmNodeContOnPdmNodeCont : public QTBNodeContainer
{
public:
    QTBEPdmNodeContOnPdmNodeCont();
    ~QTBEPdmNodeContOnPdmNodeCont() override;

    // Reads a PDM answer. Every call but one with a text that cannot be read starts a new action and removes the
    // default root, also one without document or text. The lists (each may be null) receive the nodes read, in document
    // order: an object that the answer holds twice stands there twice, first with the node that the second reading
    // replaced; relations that could not be linked are left out. A failure ends the update where it occurs; what was
    // read before it stays, and the lists are not filled.
    HRESULT UpdatePdmGraph(const CATIDOMDocument_var& spIDOMDocument, CATListValCATBaseUnknown_var* pReadObjectNodes,
                           CATListValCATBaseUnknown_var* pReadRelationNodes);
    HRESULT UpdatePdmGraph(const CATUnicodeString& usXml, CATListValCATBaseUnknown_var* pReadObjectNodes,
                           CATListValCATBaseUnknown_var* pReadRelationNodes);

    // The node that the graph holds now under the key of a node that an update may have replaced. Fails when the key
    // has left the graph.
    HRESULT RefreshPdmNode(QTBIPdmNode_var* pspIPdmNodeOnOldNode, QTBIPdmNode_var* pspIPdmNodeOnNewNode);

    // The object nodes that are roots of the graph, and all nodes, in bucket order. The lists are emptied first.
    HRESULT GetPdmRootNodes(CATListValCATBaseUnknown_var* pListOfNodes);
    HRESULT GetAllPdmNodes(CATListValCATBaseUnknown_var* pListOfNodes);

    // Has the PDM system create a relation between two objects and reads its answer; usRelationXml is handed on.
    HRESULT CreateRelationInPdmGraph(const CATUnicodeString& usRelationClass, const QTBIPdmObjNode_var& spLeftObject,
                                     const QTBIPdmObjNode_var& spRightObject, const CATUnicodeString& usRelationXml);

    // Removes a node with its adjacent relations and the rep trees that show it. With bRemoveFromPdmSystem the PDM
    // system deletes it first, and nothing happens here when it refuses; the node then always leaves the store.
    // Otherwise bKeepNodeInContainer keeps the bare node, and those of the relations. pusDeleteOption may be null.
    HRESULT RemoveNodeFromPdmGraph(QTBIPdmNode_var* pspIPdmNode, const unsigned char& bRemoveFromPdmSystem,
                                   const unsigned char& bKeepNodeInContainer, const unsigned char& bInformUser,
                                   const CATUnicodeString* pusDeleteOption);
    HRESULT RemoveNodeFromPdmGraph(const CATUnicodeString& usPdmNodeKey, const unsigned char& bRemoveFromPdmSystem,
                                   const unsigned char& bKeepNodeInContainer, const unsigned char& bInformUser,
                                   const CATUnicodeString* pusDeleteOption);

    // The object of the session's part class with that part number. An unknown number fails with an error.
    HRESULT GetPdmPartByPartNumber(const CATUnicodeString& usPartNumber, QTBIPdmNode_var* pspIPdmNodeOnPart);

    // The node of the class with that attribute value; of several the first of the newest action. Fails quietly when
    // there is none. An empty attribute name asks for any node of the class.
    HRESULT GetPdmNode(const CATUnicodeString& usClassName, const CATUnicodeString& usAttrName,
                       const CATUnicodeString& usAttrValue, QTBIPdmNode_var* pspIPdmNode);

    // All nodes of the classes that have all the attribute values, in bucket order. Names and values are parallel; a
    // node without one of the attributes does not count. Comparisons are exact.
    HRESULT GetPdmNodes(CATListValCATUnicodeString* pClassNames, const CATListValCATUnicodeString& PdmAttributeNames,
                        const CATListValCATUnicodeString& PdmAttributeValues, CATListValCATBaseUnknown_var* pPdmNodes);
    HRESULT GetPdmNodes(const CATUnicodeString& usClassName, const CATUnicodeString& usAttrName,
                        const CATUnicodeString& usAttrValue, CATListValCATBaseUnknown_var* pPdmNodes);

    // An unknown key is a success with *pbNodeFound FALSE.
    HRESULT GetPdmNodeByKey(const CATUnicodeString& usKey, QTBIPdmNode_var* pspIPdmNode, unsigned char* pbNodeFound);

    // Creates a node with that key and files it when bAddToContainer is set. Whether the key is taken is for the caller
    // to see; XML element, PDM key and schema class are set by the reader.
    HRESULT CreatePdmObjNode(const CATUnicodeString& usKey, CATBaseUnknown_var* pspBaseUnknownOnNewNode,
                             const unsigned char& bAddToContainer);
    HRESULT CreatePdmRelNode(const CATUnicodeString& usKey, CATBaseUnknown_var* pspBaseUnknownOnNewNode,
                             const unsigned char& bAddToContainer);

    // Registry of the rep node containers, in order of registration. Registering twice is not prevented; an absent
    // container is no error.
    HRESULT AddRepNodeContainer(CATBaseUnknown_var* pspBaseUnknownOnRepNodeCont);
    HRESULT RemoveRepNodeContainer(CATBaseUnknown_var* pspBaseUnknownOnRepNodeCont);

    // Lets every registered container update its trees; ends at the first failure. The argument goes to
    // QTBIRepNodeCont::UpdateAllRepTrees.
    HRESULT UpdateAllRepNodeContainers(unsigned char* pbAddNewNodes);

    // Cleans up and forgets the containers whose window is gone.
    HRESULT CheckRepNodeContainers();

    // Cleans up all registered containers and removes all nodes. The graph can be used again afterwards.
    HRESULT Cleanup();

    // The placeholder root. Whether there is one already is not looked at; removing takes all of them.
    HRESULT CreateDefaultRootNode();
    HRESULT RemoveDefaultRootNode();

    // Steps of the operations above, for this class and its tests.

    // Reads the object elements, then the relation elements of an answer. Both lists are emptied first.
    HRESULT ReadPdmNodes(const CATIDOMDocument_var& spIDOMDocument, CATListValCATBaseUnknown_var* pReadObjectNodes,
                         CATListValCATBaseUnknown_var* pReadRelationNodes);
    // Reads the elements of one kind, "o" or "r", and appends their nodes. Elements of an unknown class and elements
    // without exactly one key attribute are skipped.
    HRESULT ReadPdmNodesOfType(const CATUnicodeString& usXmlType, const CATIDOMDocument_var& spIDOMDocument,
                               unsigned char bObjects, CATListValCATBaseUnknown_var* pListOfNodes);
    // Puts a fresh node of the same kind and key in a node's place; it inherits all relations.
    HRESULT ReplacePdmNode(QTBIPdmNode_var* pspIPdmNodeOnOldNode, QTBIPdmNode_var* pspIPdmNodeOnNewNode);
    // Gives a node the schema's record of its class.
    HRESULT UpdateNodeSchemaPtr(const CATBaseUnknown_var& spBaseUnknownOnNode);
    // Removes what the answer lists for deletion. Unknown keys are skipped.
    HRESULT RemoveNodesToBeDeleted(const CATIDOMDocument_var& spIDOMDocument);

    // Lets nodes that declare to supersede another item take its place.
    HRESULT ReplaceNodesIfNecessary(CATListValCATBaseUnknown_var ListOfNodes);
    // Links the relation nodes of the list to their objects. A relation that cannot be linked leaves graph and list.
    HRESULT UpdateNodeRelations(CATListValCATBaseUnknown_var* pListOfNodes);
    // Fails quietly when an object of the relation is not in the graph.
    HRESULT UpdateNodeRelations(QTBIPdmRelNode_var* pspIPdmRelNodeOnNode);

    // Removes a node with its adjacent relations and rep trees; the form with a key fails quietly for an unknown one.
    HRESULT RemovePdmNodeFromContainer(QTBIPdmNode_var* pspIPdmNode, const unsigned char& bKeepNodeInContainer,
                                       const unsigned char& bInformUser);
    HRESULT RemovePdmNodeFromContainer(const CATUnicodeString& usKey, const unsigned char& bKeepNodeInContainer,
                                       const unsigned char& bInformUser);
    HRESULT RemoveNodeFromPdmSystem(QTBIPdmNode_var* pspIPdmNode, const CATUnicodeString* pusDeleteOption);

    // Keeps the nodes of the newest action.
    HRESULT FilterPdmNodes(CATListValCATBaseUnknown_var* pPdmNodes);

private:
    struct ReadRequest;

    HRESULT CreateNode(const char* lateType, const CATUnicodeString& usKey, CATBaseUnknown_var* pspBaseUnknownOnNewNode,
                       const unsigned char& bAddToContainer);

    HRESULT CollectObjectElements(const CATUnicodeString& usXmlType, const CATIDOMDocument_var& spIDOMDocument,
                                  CATListValCATBaseUnknown_var* pElements);
    HRESULT CollectRelationElements(const CATUnicodeString& usXmlType, const CATIDOMDocument_var& spIDOMDocument,
                                    CATListValCATBaseUnknown_var* pElements);
    HRESULT ReadPdmNode(const ReadRequest& request, int i, const CATIDOMElement_var& spIDOMElement,
                        CATListValCATBaseUnknown_var* pListOfNodes);
    HRESULT CheckClass(const ReadRequest& request, int i, const CATIDOMElement_var& spIDOMElement, bool* pIsKnown);
    HRESULT ReadKey(const ReadRequest& request, const CATIDOMElement_var& spIDOMElement, bool* pHasKey,
                    CATUnicodeString* pusQtbNodeKey);
    HRESULT MakeNode(const ReadRequest& request, int i, const CATUnicodeString& usQtbNodeKey,
                     CATBaseUnknown_var* pspBaseUnknownOnNode);
    HRESULT StampNodes(const CATListValCATBaseUnknown_var& ListOfNodes, int iActionIndex);
    HRESULT RemoveNodeToBeDeleted(int i, const CATUnicodeString& usKey);

    // Nodes that were superseded, and the node that took the place of each.
    using Successors = std::unordered_map<const CATBaseUnknown*, CATBaseUnknown_var>;

    HRESULT SupersedeIfNecessary(int i, const CATBaseUnknown_var& spBaseUnknownOnNode, Successors* pSuccessors);
    HRESULT IsInGraph(const CATBaseUnknown_var& spBaseUnknownOnNode, bool* pIsInGraph);

    void RemoveOlderRelationsOf(const QTBIPdmObjNode_var& spIPdmObjNode, const unsigned char& bKeepNodeInContainer,
                                const unsigned char& bInformUser);
    HRESULT RemoveRepNodesOf(QTBIPdmNode_var* pspIPdmNode, const unsigned char& bInformUser);

    QTBSchema* m_pSchema;
    unsigned char m_bDefaultRootNodeExists;
    CATListValCATBaseUnknown_var m_RepNodeContainers;
};
