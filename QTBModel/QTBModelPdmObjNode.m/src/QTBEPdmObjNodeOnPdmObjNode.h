#pragma once

#include "CATListValCATBaseUnknown_var.h"
#include "CATListValCATUnicodeString.h"
#include "CATUnicodeString.h"
#include "QTBEPdmNodeOnPdmNode.h"
#include "QTBINodeRelations.h"

class QTBSchemaObject;

// QTBIPdmObjNode on the late type QTBPdmObjNode: one item of the PDM system, or the default root. The slots inherited
// from QTBIPdmNode are answered by the component's own QTBIPdmNode.
class QTBEPdmObjNodeOnPdmObjNode : public QTBEPdmNodeOnPdmNode
{
public:
    QTBEPdmObjNodeOnPdmObjNode() = default;

    // TRUE when the object has no left relations, or none but rep node links and relations that the current action
    // does not affect.
    HRESULT IsPdmRootNode(unsigned char* pbIsPdmRootNode);

    // The relation nodes on one side under that name and, when pPdmObjs is given, the objects at their other ends, at
    // equal positions. bIncludeRelationSubclasses takes every relation whose class is or derives from that name. With
    // pPdmObjs, only objects of the given classes are taken (all for a null or empty list), and bNewestVersionsOnly
    // reduces both lists to the newest versions, as far as they can be told. Both lists are emptied first. Fails when
    // a relation has not exactly one object at its other end.
    HRESULT GetRightNodes(const CATUnicodeString& usRelationName, CATListValCATBaseUnknown_var* pPdmRels,
                          CATListValCATBaseUnknown_var* pPdmObjs, const NodesToRetrieve& mode,
                          const unsigned char& bIncludeRelationSubclasses, CATListValCATUnicodeString* pObjectClasses,
                          const unsigned char& bNewestVersionsOnly);
    HRESULT GetLeftNodes(const CATUnicodeString& usRelationName, CATListValCATBaseUnknown_var* pPdmRels,
                         CATListValCATBaseUnknown_var* pPdmObjs, const NodesToRetrieve& mode,
                         const unsigned char& bIncludeRelationSubclasses, CATListValCATUnicodeString* pObjectClasses,
                         const unsigned char& bNewestVersionsOnly);

    // The same for one relation class alone. pPdmObjs must be empty on entry; a relation with other than one object
    // fails quietly.
    HRESULT GetRightNodesWithoutParentClasses(const CATUnicodeString& usRelationName,
                                              CATListValCATBaseUnknown_var* pPdmRels,
                                              CATListValCATBaseUnknown_var* pPdmObjs, const NodesToRetrieve& mode,
                                              CATListValCATUnicodeString* pObjectClasses,
                                              const unsigned char& bNewestVersionsOnly);
    HRESULT GetLeftNodesWithoutParentClasses(const CATUnicodeString& usRelationName,
                                             CATListValCATBaseUnknown_var* pPdmRels,
                                             CATListValCATBaseUnknown_var* pPdmObjs, const NodesToRetrieve& mode,
                                             CATListValCATUnicodeString* pObjectClasses,
                                             const unsigned char& bNewestVersionsOnly);

    // Appends the object as an "o" element: leading XML, node type and, when asked to and when the object is a part,
    // its right relations.
    HRESULT ToXml(CATUnicodeString* pusXml, const CATUnicodeString& usLeadingXml,
                  const CATUnicodeString& usTagAttributes, const unsigned char& bWithRightRelations);

    // The object's class and, when pusAttrName is given, the name of the schema's class attribute. A base class that
    // the PDM system names for the object comes before the class attribute's value. Read once: an object whose class
    // changes arrives as a new node.
    HRESULT GetClassAttr(CATUnicodeString* pusAttrValue, CATUnicodeString* pusAttrName);

    // The object's class in the current schema, owned by the schema. Only the default root has none.
    HRESULT SetSchemaObjectPtr(QTBSchemaObject* pSchemaObject);
    HRESULT GetSchemaObjectPtr(QTBSchemaObject** ppSchemaObject);

    // Takes the adjacent relation nodes, both sides, out of the graph, never out of the PDM system. Both flags go to
    // QTBIPdmNodeCont::RemoveNodeFromPdmGraph. Ends at the first failure.
    HRESULT RemoveAllAdjacentPdmRelNodes(const unsigned char& bKeepNodeInContainer, const unsigned char& bInformUser);

    // The adjacent relation nodes: 0 left, 1 right, 2 left and then right; none for any other direction.
    HRESULT RetrieveAdjacentRelationNodes(CATListValCATBaseUnknown_var* pAdjacentRelationNodes, int iDirection);

private:
    // Directions of RetrieveAdjacentRelationNodes.
    static constexpr int LEFT = 0;
    static constexpr int RIGHT = 1;
    static constexpr int BOTH = 2;

    // What is asked of GetRightNodes and GetLeftNodes, and the two lists that they fill.
    struct Request;

    // One walk for both sides; a side owns its operations and its texts.
    template <class Side>
    HRESULT GetNodes(const Request& request, const unsigned char& bIncludeRelationSubclasses);
    template <class Side>
    HRESULT GetNodesOfSubclasses(const Request& request);
    template <class Side>
    HRESULT GetNodesWithoutParentClasses(const Request& request);
    template <class Side>
    HRESULT AppendObjectsOfRelations(const Request& request);
    template <class Side>
    HRESULT AppendAdjacentRelationNodes(const QTBINodeRelations_var& spINodeRelationsOnThis,
                                        CATListValCATBaseUnknown_var* pAdjacentRelationNodes);

    static HRESULT KeepObjectsOfClasses(const Request& request);

    QTBSchemaObject* m_pSchemaObject = NULL;
    CATUnicodeString m_usClassAttrName;
    CATUnicodeString m_usClassName;
};
