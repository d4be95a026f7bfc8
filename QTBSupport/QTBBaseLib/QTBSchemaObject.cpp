#include "QTBSchemaObject.h"

#include "QTBPdmTree.h"
#include "QTBSchemaElementList.h"

QTBSchemaObject::QTBSchemaObject(const CATUnicodeString& usName, const CATUnicodeString& usNlsKey)
    : QTBSchemaNode(usName, usNlsKey)
{
}

QTBSchemaObject::~QTBSchemaObject() = default;

int QTBSchemaObject::GetCustomExpandPdmTreeCount() const
{
    return m_pCustomExpandPdmTrees != nullptr ? static_cast<int>(m_pCustomExpandPdmTrees->size()) : 0;
}

HRESULT QTBSchemaObject::GetCustomExpandPdmTreePtr(int index, QTBPdmTree** ppPdmTree) const
{
    return m_pCustomExpandPdmTrees != nullptr ? QTBGetSchemaElement(*m_pCustomExpandPdmTrees, index, ppPdmTree)
                                              : E_FAIL;
}

void QTBSchemaObject::Inherit(const QTBSchemaObject& parent)
{
    QTBSchemaNode::Inherit(parent);
    if (m_pCustomExpandPdmTrees == nullptr) {
        m_pCustomExpandPdmTrees = parent.m_pCustomExpandPdmTrees;
    }
    if (m_pPartToFilePdmTree == nullptr) {
        m_pPartToFilePdmTree = parent.m_pPartToFilePdmTree;
    }
    if (m_CatiaFileClass == QTB_CATIA_FILE_CLASS_UNKNOWN) {
        m_CatiaFileClass = parent.m_CatiaFileClass;
        m_bIsBomPartFile = parent.m_bIsBomPartFile;
    }
    if (m_bIsPart == FALSE) {
        m_bIsPart = parent.m_bIsPart;
        m_bCanHaveSubParts = parent.m_bCanHaveSubParts;
        m_bCanBeCatPart = parent.m_bCanBeCatPart;
    }
}
