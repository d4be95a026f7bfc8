#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "QTBStoreClass.h"
#include "QTBStoreStatement.h"

class QTBSchema;
class QTBStoreDatabase;

// The classes and attribute names that the store knows, as one request sees them, and what the PDM schema in force says
// about them.
class QTBStoreClasses
{
public:
    // Raises QTBStoreFailure when no schema is loaded.
    explicit QTBStoreClasses(QTBStoreDatabase& database);
    ~QTBStoreClasses();

    const QTBSchema& GetSchema() const { return *m_pSchema; }

    // The class with that id.
    const QTBStoreClass& Get(std::int64_t id);

    // Id of a class or an attribute name, 0 when nothing in the store has it, and the same for one that is being
    // written.
    std::int64_t FindClass(const CATUnicodeString& usName);
    std::int64_t RequireClass(const CATUnicodeString& usName);
    std::int64_t FindAttribute(const CATUnicodeString& usName);
    std::int64_t RequireAttribute(const CATUnicodeString& usName);

    // Notes the class that stands in for one that the schema does not know.
    void SetBaseName(std::int64_t id, const CATUnicodeString& usBaseName);

    // Ids of the classes of that name and of its subclasses, as far as the store has items of them. Raises
    // QTBStoreFailure for a name that neither the schema nor the store knows as one of objects or relations.
    std::vector<std::int64_t> GetObjectKinds(const CATUnicodeString& usName);
    std::vector<std::int64_t> GetRelationKinds(const CATUnicodeString& usName);

private:
    struct Names
    {
        const char* find;
        const char* insert;
        std::unordered_map<CATUnicodeString, std::int64_t> ids;
    };

    std::int64_t Find(Names& names, const CATUnicodeString& usName);
    std::int64_t Require(Names& names, const CATUnicodeString& usName);
    void Describe(QTBStoreClass* pClass) const;
    void LoadAll();

    QTBStoreDatabase& m_Database;
    const QTBSchema* m_pSchema = nullptr;
    Names m_ClassNames;
    Names m_AttributeNames;
    std::unordered_map<std::int64_t, std::unique_ptr<QTBStoreClass>> m_Classes;
};
