#include "QTBSchemaAttributeRepList.h"

#include "QTBSchemaElementList.h"

HRESULT QTBSchemaAttributeRepList::GetPtr(int index, QTBSchemaAttributeRep** ppAttributeRep) const
{
    return QTBGetSchemaElement(m_Reps, index, ppAttributeRep);
}

const QTBSchemaAttributeRep* QTBSchemaAttributeRepList::FindEmbedded(const CATUnicodeString& usName) const
{
    for (const std::unique_ptr<QTBSchemaAttributeRep>& pRep : m_Reps) {
        if (!pRep->GetEmbeddedObjAttr().IsEmpty() && pRep->GetName() == usName) {
            return pRep.get();
        }
    }
    return nullptr;
}
