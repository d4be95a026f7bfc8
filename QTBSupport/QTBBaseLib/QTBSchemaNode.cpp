#include "QTBSchemaNode.h"

QTBSchemaNode::QTBSchemaNode(const CATUnicodeString& usName, const CATUnicodeString& usNlsKey)
    : QTBSchemaElementBase(usName), m_usNlsKey(usNlsKey)
{
}

QTBSchemaNode::~QTBSchemaNode() = default;

bool QTBSchemaNode::IsKindOf(const CATUnicodeString& usClassName) const
{
    const QTBSchemaNode* pNode = this;
    while (pNode != nullptr && !(pNode->GetName() == usClassName)) {
        pNode = pNode->m_pParent;
    }
    return pNode != nullptr;
}

HRESULT QTBSchemaNode::GetFormPtr(const CATUnicodeString& usFormName, QTBSchemaForm** ppForm) const
{
    if (ppForm == nullptr) {
        return E_POINTER;
    }
    for (const QTBSchemaNode* pNode = this; pNode != nullptr; pNode = pNode->m_pParent) {
        const auto found = pNode->m_Forms.find(usFormName);
        if (found != pNode->m_Forms.end()) {
            *ppForm = found->second.get();
            return S_OK;
        }
    }
    return E_FAIL;
}

unsigned char QTBSchemaNode::ShowContextAction(const CATUnicodeString& usActionName) const
{
    return ShowContextActionIn(usActionName).IsEmpty() ? FALSE : TRUE;
}

CATUnicodeString QTBSchemaNode::ShowContextActionIn(const CATUnicodeString& usActionName) const
{
    for (const QTBSchemaNode* pNode = this; pNode != nullptr; pNode = pNode->m_pParent) {
        const auto found = pNode->m_PlacesOfContextActions.find(usActionName);
        if (found != pNode->m_PlacesOfContextActions.end()) {
            return found->second;
        }
    }
    return CATUnicodeString();
}

void QTBSchemaNode::Inherit(const QTBSchemaNode& parent)
{
    m_pParent = &parent;
    if (m_usIconName.IsEmpty()) {
        m_usIconName = parent.m_usIconName;
    }
    if (m_usTooltipAttrName.IsEmpty()) {
        m_usTooltipAttrName = parent.m_usTooltipAttrName;
    }
    if (m_pDescription == nullptr) {
        m_pDescription = parent.m_pDescription;
    }
}
