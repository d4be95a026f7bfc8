#pragma once

#include "CATInterface_var.h"
#include "QTBNodeAttr.h"

class QTBINodeAttributes;
using QTBINodeAttributes_var = CATInterface_var<QTBINodeAttributes>;

// Embedded object: `<a name="N" type="object"><o>...</o></a>`, or one `<embedded>` in place of the `<o>`. The
// attributes of the embedded object belong to a PDM object node of its own.
class QTBBASELIB_API QTBObjectAttr : public QTBNodeAttr
{
public:
    // Takes the element of the embedded object and the attributes handle of the PDM object node that was created for
    // it, and fills that node from the element (QTBINodeAttributes::SetXmlElement). The attribute's name is that of the
    // "a" element around the given element. Not valid when there is none, when the node cannot be filled, and when
    // embedded objects are nested deeper than MAX_NESTING (their keys grow with each level).
    QTBObjectAttr(CATIDOMElement_var* pspIDOMElementOnObject, CATBaseUnknown_var* pspNodeAttributes);
    ~QTBObjectAttr() override;

    // The PDM object node that holds the embedded object's attributes.
    HRESULT GetObjectNode(CATBaseUnknown_var* pspBaseUnknownOnObjectNode) const;

    // The embedded node's description.
    CATUnicodeString ToString() override;

    static constexpr int MAX_NESTING = 100;

protected:
    std::string_view GetTypeName() const override;
    // Writes the embedded object with its present attributes. XML attributes of its element, and child elements that
    // are no attributes of the node, are written as they were read.
    HRESULT AppendContent(std::string* pXml) const override;

private:
    CATIDOMElement_var m_spIDOMElementOnObject;
    QTBINodeAttributes_var m_spINodeAttributes;
};

using CATListPtrQTBObjectAttr = CATListPtr<QTBObjectAttr>;
