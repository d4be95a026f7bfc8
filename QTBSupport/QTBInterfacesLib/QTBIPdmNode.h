#pragma once

#include "CATListValCATBaseUnknown_var.h"
#include "CATListValCATUnicodeString.h"
#include "QTBINode.h"

class QTBIPdmNodeCont;
class QTBIRepNodeCont;
class QTBSchemaNode;
using QTBIPdmNodeCont_var = CATInterface_var<QTBIPdmNodeCont>;
using QTBIRepNodeCont_var = CATInterface_var<QTBIRepNodeCont>;

inline constexpr IID IID_QTBIPdmNode{"QTBIPdmNode"};

// What the object and relation nodes of the PDM graph share.
class QTBINTERFACESLIB_API QTBIPdmNode : public QTBINode
{
    CATDeclareInterface(QTBIPdmNode, QTBINode)

public:
    // The rep nodes that show this node: those of one window, or of all windows for an empty container.
    virtual HRESULT GetRepNodes(CATListValCATBaseUnknown_var* pListOfRepNodes,
                                const QTBIRepNodeCont_var& spIRepNodeCont) = 0;
    // The same for each of them, in all windows, as the rep node's own operations do it (QTBIRepNode).
    virtual HRESULT RedrawRepNodes(unsigned char* pbRecursive) = 0;
    virtual HRESULT PreselectRepNodes() = 0;
    virtual HRESULT HighlightRepNodes(const unsigned char& bEmptyHighlightFirst,
                                      unsigned char* pbHighlightObjectOfRelation) = 0;

    // Class of the node; "DEFAULT_ROOT_NODE" for the default root.
    virtual HRESULT GetClassName(CATUnicodeString* pusClassName) = 0;
    // The one-line text that the tree shows.
    virtual HRESULT GetDescriptionString(CATUnicodeString* pusDescriptionString) = 0;

    // Not provided on PDM nodes: quiet failures. Use GetQtbInfoAttr or the attributes of the node.
    virtual HRESULT GetQtbAttr(const CATUnicodeString& usAttrName, unsigned char* pbAttrValue,
                               const unsigned char& bPrintErrorIfUndefined, unsigned char* pbAttrIsDefined,
                               const unsigned char& bEmptyValueCounts) = 0;
    virtual HRESULT GetQtbAttr(const CATUnicodeString& usAttrName, CATListValCATUnicodeString* pAttrValues,
                               const unsigned char& bPrintErrorIfUndefined, unsigned char* pbAttrIsDefined,
                               const unsigned char& bEmptyValueCounts) = 0;
    virtual HRESULT GetQtbAttr(const CATUnicodeString& usAttrName, CATUnicodeString* pusAttrValue,
                               const unsigned char& bPrintErrorIfUndefined, unsigned char* pbAttrIsDefined,
                               const unsigned char& bEmptyValueCounts) = 0;

    // Info attributes: the entries of the node's name/value list "QtbInfo". An undefined entry is a quiet failure
    // unless pbAttrIsDefined, which may be null, is there to say so; an empty value is defined only with
    // bEmptyValueCounts. The flag form refuses anything but true and false.
    virtual HRESULT SetQtbInfoAttr(const CATUnicodeString& usAttrName, const CATUnicodeString& usAttrValue) = 0;
    virtual HRESULT GetQtbInfoAttr(const CATUnicodeString& usAttrName, unsigned char* pbAttrValue,
                                   const unsigned char& bPrintErrorIfUndefined, unsigned char* pbAttrIsDefined,
                                   const unsigned char& bEmptyValueCounts) = 0;
    virtual HRESULT GetQtbInfoAttr(const CATUnicodeString& usAttrName, CATListValCATUnicodeString* pAttrValues,
                                   const unsigned char& bPrintErrorIfUndefined, unsigned char* pbAttrIsDefined,
                                   const unsigned char& bEmptyValueCounts) = 0;
    virtual HRESULT GetQtbInfoAttr(const CATUnicodeString& usAttrName, CATUnicodeString* pusAttrValue,
                                   const unsigned char& bPrintErrorIfUndefined, unsigned char* pbAttrIsDefined,
                                   const unsigned char& bEmptyValueCounts) = 0;
    // A further XML attribute of an entry, "" when the entry has no such attribute.
    virtual HRESULT GetQtbInfoAttrXmlAttrVal(const CATUnicodeString& usInfoAttrName,
                                             const CATUnicodeString& usXmlAttrName,
                                             CATUnicodeString* pusXmlAttrValue) = 0;

    virtual HRESULT SetSchemaNodePtr(QTBSchemaNode* pSchemaNode) = 0;
    // Null, without failing, for the default root node only.
    virtual HRESULT GetSchemaNodePtr(QTBSchemaNode** ppSchemaNode) = 0;
    virtual HRESULT SetPdmNodeContainer(const QTBIPdmNodeCont_var& spIPdmNodeCont) = 0;
    virtual HRESULT GetPdmNodeContainer(QTBIPdmNodeCont_var* pspIPdmNodeCont) = 0;

    // Whether the current action read the node.
    virtual HRESULT IsAffectedByCurrentAction(unsigned char* pbIsAffected) = 0;

    // Reads the PDM key from the node's attributes; called once by the reader.
    virtual HRESULT SetPdmKey() = 0;
    virtual const CATUnicodeString& GetPdmKey() = 0;
    virtual unsigned int GetPdmKeyHash() = 0;
};

using QTBIPdmNode_var = CATInterface_var<QTBIPdmNode>;
