#pragma once

#include "CATListValCATBaseUnknown_var.h"
#include "CATListValCATUnicodeString.h"
#include "CATUnicodeString.h"
#include "QTBENodeOnNode.h"

class QTBIPdmNode;
class QTBIPdmNodeCont;
class QTBIRepNodeCont;
class QTBNameValueListAttr;
class QTBSchemaDescription;
class QTBSchemaNode;
using QTBIPdmNode_var = CATInterface_var<QTBIPdmNode>;
using QTBIPdmNodeCont_var = CATInterface_var<QTBIPdmNodeCont>;
using QTBIRepNodeCont_var = CATInterface_var<QTBIRepNodeCont>;

// QTBIPdmNode on the late type QTBPdmNode: what object and relation nodes of the PDM graph share. Created with its
// node by the PDM node container, which then sets the container and, when the node's record arrives, PDM key and
// schema class.
//
// The extensions of the derived late types are derived from this class for GetIdentifyingAttributes and ToXml. Their
// inherited members stay empty: the state of a node is that of its component's own QTBIPdmNode, and the operations
// they call reach it only through the component's interfaces.
class QTBEPdmNodeOnPdmNode : public QTBENodeOnNode
{
public:
    QTBEPdmNodeOnPdmNode();
    ~QTBEPdmNodeOnPdmNode() override;

    // The rep nodes that show this node, in the order in which they were linked: those of one window, or those of all
    // windows for an empty container (a shared copy of the node's own list, whatever its length). Fails for a null
    // pointer and when a rep node does not answer; an empty list is a success.
    HRESULT GetRepNodes(CATListValCATBaseUnknown_var* pListOfRepNodes, const QTBIRepNodeCont_var& spIRepNodeCont);

    // Redraws the rep nodes of all windows; the argument goes to QTBIRepNode::Redraw. Ends at the first failure.
    HRESULT RedrawRepNodes(unsigned char* pbRecursive);

    // Makes the rep nodes of all windows the content of their editors' preselected (highlighted) sets. The sets are
    // emptied first, HighlightRepNodes does so on request only; its second argument goes to QTBIRepNode::Highlight.
    // Ends at the first failure.
    HRESULT PreselectRepNodes();
    HRESULT HighlightRepNodes(const unsigned char& bEmptyHighlightFirst, unsigned char* pbHighlightObjectOfRelation);

    // The PDM class: of an object its class attribute, of a relation its relation attribute, "DEFAULT_ROOT_NODE" for
    // the default root. Fails for a component that is neither object nor relation.
    HRESULT GetClassName(CATUnicodeString* pusClassName);

    // The one-line text that the tree shows: the description attributes of the node's schema class, or the class's
    // name, or the node's key, and for objects a status in parentheses. Called by QTBINode::GetNodeDescriptionString.
    HRESULT GetDescriptionString(CATUnicodeString* pusDescriptionString);

    // Deliberately not provided on PDM nodes: each checks its out-pointer and fails quietly.
    HRESULT GetQtbAttr(const CATUnicodeString& usAttrName, unsigned char* pbAttrValue,
                       const unsigned char& bPrintErrorIfUndefined, unsigned char* pbAttrIsDefined,
                       const unsigned char& bEmptyValueCounts);
    HRESULT GetQtbAttr(const CATUnicodeString& usAttrName, CATListValCATUnicodeString* pAttrValues,
                       const unsigned char& bPrintErrorIfUndefined, unsigned char* pbAttrIsDefined,
                       const unsigned char& bEmptyValueCounts);
    HRESULT GetQtbAttr(const CATUnicodeString& usAttrName, CATUnicodeString* pusAttrValue,
                       const unsigned char& bPrintErrorIfUndefined, unsigned char* pbAttrIsDefined,
                       const unsigned char& bEmptyValueCounts);

    // Sets an info attribute, an entry of the name/value list "QtbInfo". Fails for an empty name and on a node
    // without that list.
    HRESULT SetQtbInfoAttr(const CATUnicodeString& usAttrName, const CATUnicodeString& usAttrValue);

    // Reads an info attribute as a flag, a list or a text. An empty value is defined only with bEmptyValueCounts. With
    // pbAttrIsDefined (may be null) an undefined attribute is a success of the text and the list form that says so;
    // otherwise the text form fails quietly, after writing an error line to the debug output when
    // bPrintErrorIfUndefined is set, and the other two report that failure. An undefined flag fails quietly, and so
    // does one other than true and false, in any of the three spellings of each.
    HRESULT GetQtbInfoAttr(const CATUnicodeString& usAttrName, unsigned char* pbAttrValue,
                           const unsigned char& bPrintErrorIfUndefined, unsigned char* pbAttrIsDefined,
                           const unsigned char& bEmptyValueCounts);
    HRESULT GetQtbInfoAttr(const CATUnicodeString& usAttrName, CATListValCATUnicodeString* pAttrValues,
                           const unsigned char& bPrintErrorIfUndefined, unsigned char* pbAttrIsDefined,
                           const unsigned char& bEmptyValueCounts);
    HRESULT GetQtbInfoAttr(const CATUnicodeString& usAttrName, CATUnicodeString* pusAttrValue,
                           const unsigned char& bPrintErrorIfUndefined, unsigned char* pbAttrIsDefined,
                           const unsigned char& bEmptyValueCounts);

    // A further XML attribute of an info attribute's entry, empty when the entry has none of that name. Fails quietly
    // for an undefined info attribute.
    HRESULT GetQtbInfoAttrXmlAttrVal(const CATUnicodeString& usInfoAttrName, const CATUnicodeString& usXmlAttrName,
                                     CATUnicodeString* pusXmlAttrValue);

    // The node's class in the current schema, owned by the schema. Only the default root has none; on any other node
    // reading it before it was set fails.
    HRESULT SetSchemaNodePtr(QTBSchemaNode* pSchemaNode);
    HRESULT GetSchemaNodePtr(QTBSchemaNode** ppSchemaNode);

    // The container that created the node. Reading it before it was set fails.
    HRESULT SetPdmNodeContainer(const QTBIPdmNodeCont_var& spIPdmNodeCont);
    HRESULT GetPdmNodeContainer(QTBIPdmNodeCont_var* pspIPdmNodeCont);

    // Whether the node's action index is the session's current one, that is whether the current action read it.
    HRESULT IsAffectedByCurrentAction(unsigned char* pbIsAffected);

    // Reads the PDM key from the schema's key attribute and folds it into the hash, which is 0 on the single call that
    // the reader makes per node; a second call folds the new key into the old hash.
    HRESULT SetPdmKey();
    const CATUnicodeString& GetPdmKey() const { return m_usPdmKey; }
    unsigned int GetPdmKeyHash() const { return m_uiPdmKeyHash; }

    // Names of the attributes that identify the item to the PDM system: class and key, and for a relation its two
    // objects and their classes. Used by ToXml.
    HRESULT GetIdentifyingAttributes(CATListValCATUnicodeString* pAttrList);

    // Writes to the debug output that the info attribute is missing, with all attributes of the node.
    HRESULT PrintAttributeDoesNotExistError(const CATUnicodeString& usAttrName);

    // Appends the node as an XML element: its identifying attributes, then the additional XML. usXmlType is the tag,
    // "o" or "r"; the tag attributes go into the opening tag verbatim. The ToXml of object and relation nodes end here.
    HRESULT ToXml(CATUnicodeString* pusPdmObjectXmlString, const CATUnicodeString& usAdditionalXml,
                  const CATUnicodeString& usTagAttributes, const CATUnicodeString& usXmlType);

private:
    HRESULT AppendDescriptionAttributes(const QTBIPdmNode_var& spIPdmNodeOnThis, QTBSchemaDescription* pDescription,
                                        CATUnicodeString* pusDescription);
    HRESULT GetQtbInfo(QTBNameValueListAttr** ppNameValueListAttr);

    QTBSchemaNode* m_pSchemaNode;
    QTBIPdmNodeCont_var m_spIPdmNodeCont;
    CATUnicodeString m_usPdmKey;
    unsigned int m_uiPdmKeyHash;
};
