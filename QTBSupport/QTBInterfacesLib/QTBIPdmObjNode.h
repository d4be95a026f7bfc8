#pragma once

#include "QTBINodeRelations.h"
#include "QTBIPdmNode.h"

class QTBSchemaObject;

inline constexpr IID IID_QTBIPdmObjNode{"QTBIPdmObjNode"};

// One item of the PDM system: a part, a document, a file, or the default root.
class QTBINTERFACESLIB_API QTBIPdmObjNode : public QTBIPdmNode
{
    CATDeclareInterface(QTBIPdmObjNode, QTBIPdmNode)

public:
    // Whether the object has no current relation on its left.
    virtual HRESULT IsPdmRootNode(unsigned char* pbIsPdmRootNode) = 0;

    // The relation nodes of that relation on one side and, parallel to them when pPdmObjs is given, the objects at
    // their other ends. Optionally with the relation's subclasses, only objects of the given classes (all for an empty
    // list), only the newest version of each object.
    virtual HRESULT GetRightNodes(const CATUnicodeString& usRelationName, CATListValCATBaseUnknown_var* pPdmRels,
                                  CATListValCATBaseUnknown_var* pPdmObjs, const NodesToRetrieve& mode,
                                  const unsigned char& bIncludeRelationSubclasses,
                                  CATListValCATUnicodeString* pObjectClasses,
                                  const unsigned char& bNewestVersionsOnly) = 0;
    virtual HRESULT GetLeftNodes(const CATUnicodeString& usRelationName, CATListValCATBaseUnknown_var* pPdmRels,
                                 CATListValCATBaseUnknown_var* pPdmObjs, const NodesToRetrieve& mode,
                                 const unsigned char& bIncludeRelationSubclasses,
                                 CATListValCATUnicodeString* pObjectClasses,
                                 const unsigned char& bNewestVersionsOnly) = 0;

    // Appends the object as an "o" element with its identifying attributes, and its right relations when asked to and
    // when it is a part.
    virtual HRESULT ToXml(CATUnicodeString* pusXml, const CATUnicodeString& usLeadingXml,
                          const CATUnicodeString& usTagAttributes, const unsigned char& bWithRightRelations) = 0;

    // The object's class and the name of the class attribute, which may be null.
    virtual HRESULT GetClassAttr(CATUnicodeString* pusAttrValue, CATUnicodeString* pusAttrName) = 0;

    virtual HRESULT SetSchemaObjectPtr(QTBSchemaObject* pSchemaObject) = 0;
    virtual HRESULT GetSchemaObjectPtr(QTBSchemaObject** ppSchemaObject) = 0;

    // Takes every relation node on either side out of the graph.
    virtual HRESULT RemoveAllAdjacentPdmRelNodes(const unsigned char& bKeepNodeInContainer,
                                                 const unsigned char& bInformUser) = 0;
    // iDirection: 0 left, 1 right, 2 both; any other value gives an empty list.
    virtual HRESULT RetrieveAdjacentRelationNodes(CATListValCATBaseUnknown_var* pAdjacentRelationNodes,
                                                  int iDirection) = 0;
};

using QTBIPdmObjNode_var = CATInterface_var<QTBIPdmObjNode>;
