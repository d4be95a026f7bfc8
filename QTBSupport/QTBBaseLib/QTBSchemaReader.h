#pragma once

#include <memory>
#include <unordered_map>
#include <vector>

#include "CATDataType.h"
#include "CATListValCATUnicodeString.h"
#include "CATXMLStrictElement.h"
#include "QTBSchema.h"

class QTBPdmTree;

// Makes a schema from a schema file; docs/formats.md describes its form. Called by QTBSchemaUtil::LoadSchema.
class QTBSchemaReader
{
public:
    // Fails with a CATXMLError that names file, line and column, what is wrong there and what was expected; *ppSchema
    // stays as it was then.
    static HRESULT ReadFile(const CATUnicodeString& usPath, std::unique_ptr<QTBSchema>* ppSchema);

    // More classes than this, and longer lines of descent, are refused: each relation lists the classes of its ends
    // with their subclasses.
    static constexpr int MAX_CLASS_COUNT = 5000;
    static constexpr int MAX_CLASS_LEVEL = 32;

private:
    QTBSchemaReader();
    ~QTBSchemaReader();

    void ReadSchema(const CATXMLStrictElement& root);
    void ReadSettings(const CATXMLStrictElement& root);
    void ReadAttributeNames(const CATXMLStrictElement& section);
    void ReadSession(const CATXMLStrictElement& section);
    void ReadDataSources(const CATXMLStrictElement& section);
    void ReadAttributes(const CATXMLStrictElement& section);
    void ReadObjects(const CATXMLStrictElement& section);
    void ReadRelations(const CATXMLStrictElement& section);
    void ReadNodeBehaviors(const CATXMLStrictElement& section);

    void ReadObject(const CATXMLStrictElement& element);
    void ReadRelation(const CATXMLStrictElement& element);
    // Makes the class that the element names, with what all kinds of classes have in common.
    template <class Class, class Index>
    std::unique_ptr<Class> MakeClass(const CATXMLStrictElement& element, const Index& index);
    // Reads a child element that every kind of class can have; false for any other.
    bool ReadNodePart(const CATXMLStrictElement& element, QTBSchemaNode* pNode);
    template <class Class, class Index>
    void InheritFromParent(const CATXMLStrictElement& element, const Index& index, Class* pClass);

    // Appends the class of objects that a relation's end names, and its subclasses.
    void ReadEnd(const CATXMLStrictElement& element, CATListValCATUnicodeString* pClassNames) const;
    std::unique_ptr<QTBPdmTree> ReadPdmTree(const CATXMLStrictElement& element, const CATUnicodeString& usName);
    CATUnicodeString ReadReference(const CATXMLStrictElement& element, const char* attribute, bool isRelation);

    void FileKindNames();
    void FilePartAndFileClasses();
    void CheckReferences() const;

    // A name that must be that of a class, which may stand further down in the file.
    struct Reference
    {
        CATXMLStrictElement element;
        const char* attribute;
        bool isRelation;
    };

    std::unique_ptr<QTBSchema> m_pSchema;
    std::vector<Reference> m_References;
    // How many classes stand above a class, itself included.
    std::unordered_map<const QTBSchemaNode*, int> m_ClassLevels;
    // Names of each class of objects and of all its subclasses.
    std::unordered_map<CATUnicodeString, CATListValCATUnicodeString> m_KindNames;
};
