#pragma once

#include <memory>
#include <unordered_map>

#include "CATDataType.h"
#include "QTBSchemaDescription.h"
#include "QTBSchemaElementBase.h"
#include "QTBSchemaForm.h"

// A class of the PDM system, of objects or of relations. What a class does not say itself it has from its parent class.
class QTBBASELIB_API QTBSchemaNode : public QTBSchemaElementBase
{
public:
    // The class that this one specialises, null for none.
    const QTBSchemaNode* GetParentPtr() const { return m_pParent; }
    // Whether the class is that one or one of its subclasses.
    bool IsKindOf(const CATUnicodeString& usClassName) const;

    // Key of the display name in the schema's catalog, empty when it has none. Not inherited.
    const CATUnicodeString& GetNlsKey() const { return m_usNlsKey; }

    // Null when the schema does not say how such nodes are described; they are called by their class name then.
    QTBSchemaDescription* GetDescriptionPtr() const { return m_pDescription.get(); }

    // The form of that name; E_FAIL when the class defines none.
    HRESULT GetFormPtr(const CATUnicodeString& usFormName, QTBSchemaForm** ppForm) const;

    // Whether the context menu of a node of this class offers the action, and the places where it does, a text that
    // contains "PdmWindow", "QueryDialog" or both; empty when it is not offered.
    unsigned char ShowContextAction(const CATUnicodeString& usActionName) const;
    CATUnicodeString ShowContextActionIn(const CATUnicodeString& usActionName) const;

    // Name of the icon, empty when the class has none.
    const CATUnicodeString& GetIconName() const { return m_usIconName; }
    // Name of the attribute that the tooltip shows, empty when the class has none.
    const CATUnicodeString& GetTooltipAttrName() const { return m_usTooltipAttrName; }

protected:
    QTBSchemaNode(const CATUnicodeString& usName, const CATUnicodeString& usNlsKey);
    ~QTBSchemaNode();

    // Makes that class, which is complete, the parent and takes over what this class does not say itself.
    void Inherit(const QTBSchemaNode& parent);

private:
    friend class QTBSchemaReader;

    CATUnicodeString m_usNlsKey;
    CATUnicodeString m_usIconName;
    CATUnicodeString m_usTooltipAttrName;
    const QTBSchemaNode* m_pParent = nullptr;
    std::shared_ptr<QTBSchemaDescription> m_pDescription;
    // What this class says itself; the rest is found with its parents.
    std::unordered_map<CATUnicodeString, std::unique_ptr<QTBSchemaForm>> m_Forms;
    std::unordered_map<CATUnicodeString, CATUnicodeString> m_PlacesOfContextActions;
};
