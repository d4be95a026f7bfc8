#pragma once

#include "QTBConstants.h"
#include "QTBSchemaNode.h"

class QTBPdmTree;

// A class of objects: parts, documents, files and others.
class QTBBASELIB_API QTBSchemaObject : public QTBSchemaNode
{
public:
    QTBSchemaObject(const CATUnicodeString& usName, const CATUnicodeString& usNlsKey);
    ~QTBSchemaObject();

    // Trees along which the user can expand an object of this class in one step, counted from 1.
    int GetCustomExpandPdmTreeCount() const;
    // E_FAIL outside the list.
    HRESULT GetCustomExpandPdmTreePtr(int index, QTBPdmTree** ppPdmTree) const;

    // The way from a part of this class to its files, null when the schema gives none.
    QTBPdmTree* GetPartToFilePdmTreePtr() const { return m_pPartToFilePdmTree.get(); }

    // Whether the objects are parts of the BOM part structure, whether such parts can have sub-parts, and whether the
    // document of a single part can be stored as one.
    unsigned char IsPart() const { return m_bIsPart; }
    unsigned char CanHaveSubParts() const { return m_bCanHaveSubParts; }
    unsigned char CanBeCatPart() const { return m_bCanBeCatPart; }

    // The kind of CAD file that the objects hold, QTB_CATIA_FILE_CLASS_UNKNOWN for objects that hold none.
    QTBCatiaFileClass GetCatiaFileClass() const { return m_CatiaFileClass; }
    // Whether a document with such a file stands for a part of the BOM part structure.
    unsigned char IsBomPartFile() const { return m_bIsBomPartFile; }

private:
    friend class QTBSchemaReader;

    using PdmTrees = std::vector<std::unique_ptr<QTBPdmTree>>;

    // Makes that class, which is complete, the parent and takes over what this class does not say itself.
    void Inherit(const QTBSchemaObject& parent);

    std::shared_ptr<PdmTrees> m_pCustomExpandPdmTrees;
    std::shared_ptr<QTBPdmTree> m_pPartToFilePdmTree;
    QTBCatiaFileClass m_CatiaFileClass = QTB_CATIA_FILE_CLASS_UNKNOWN;
    unsigned char m_bIsBomPartFile = FALSE;
    unsigned char m_bIsPart = FALSE;
    unsigned char m_bCanHaveSubParts = FALSE;
    unsigned char m_bCanBeCatPart = FALSE;
};
