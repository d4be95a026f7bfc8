#include "QTBStoreClasses.h"

#include <algorithm>

#include "CATError.h"
#include "CATXMLWriter.h"
#include "QTBSchema.h"
#include "QTBSchemaUtil.h"
#include "QTBStoreDatabase.h"
#include "QTBStoreFailure.h"

namespace {

// Whether the class or one of its subclasses holds CAD files: the general class of files counts as one.
bool HoldsFiles(const QTBSchema& schema, const QTBSchemaObject& object)
{
    for (int i = 1; i <= schema.GetObjectCount(); ++i) {
        QTBSchemaObject* pOther = nullptr;
        if (SUCCEEDED(schema.GetObjectPtr(i, &pOther)) && pOther->GetCatiaFileClass() != QTB_CATIA_FILE_CLASS_UNKNOWN &&
            pOther->IsKindOf(object.GetName())) {
            return true;
        }
    }
    return false;
}

void AppendAttribute(const CATUnicodeString& usName, const CATUnicodeString& usValue, std::string* pXml)
{
    if (usName.IsEmpty()) {
        return;
    }
    *pXml += "<a";
    CATXMLWriter::AppendAttribute("name", usName.View(), pXml);
    *pXml += '>';
    CATXMLWriter::AppendText(usValue.View(), pXml);
    *pXml += "</a>";
}

} // namespace

QTBStoreClasses::QTBStoreClasses(QTBStoreDatabase& database)
    : m_Database(database), m_ClassNames{"SELECT id FROM class WHERE name = ?",
                                         "INSERT INTO class (name) VALUES (?)",
                                         {}},
      m_AttributeNames{"SELECT id FROM attribute WHERE name = ?", "INSERT INTO attribute (name) VALUES (?)", {}}
{
    QTBSchema* pSchema = nullptr;
    if (FAILED(QTBSchemaUtil::GetCurrentSchemaPtr(&pSchema))) {
        throw QTBStoreFailure("NoSchemaForStoreERR_1011");
    }
    m_pSchema = pSchema;
}

QTBStoreClasses::~QTBStoreClasses() = default;

const QTBStoreClass& QTBStoreClasses::Get(std::int64_t id)
{
    std::unique_ptr<QTBStoreClass>& pClass = m_Classes[id];
    if (pClass == nullptr) {
        QTBStoreStatement statement = m_Database.Prepare("SELECT name, base_name FROM class WHERE id = ?");
        if (!statement.Bind(1, id).Step()) {
            m_Database.RaiseDamaged("class " + std::to_string(id) + " is missing");
        }
        auto pNewClass = std::make_unique<QTBStoreClass>();
        pNewClass->id = id;
        pNewClass->name = CATUnicodeString(statement.GetText(0));
        pNewClass->baseName = CATUnicodeString(statement.GetText(1));
        Describe(pNewClass.get());
        pClass = std::move(pNewClass);
    }
    return *pClass;
}

void QTBStoreClasses::Describe(QTBStoreClass* pClass) const
{
    AppendAttribute(m_pSchema->GetClassAttr(), pClass->name, &pClass->classXml);
    QTBSchemaNode* pNode = m_pSchema->FindClass(pClass->name);
    if (pNode == nullptr && !pClass->baseName.IsEmpty()) {
        pNode = m_pSchema->FindClass(pClass->baseName);
    }
    if (pNode == nullptr) {
        return;
    }
    if (const QTBSchemaObject* pObject = m_pSchema->FindObject(pNode->GetName()); pObject != nullptr) {
        pClass->isFile = HoldsFiles(*m_pSchema, *pObject);
        pClass->needsCheckOut = pObject->ShowContextAction("CheckOut") != FALSE;
        pClass->isVersioned = pObject->IsPart() != FALSE || pClass->isFile || pClass->needsCheckOut;
        return;
    }
    AppendAttribute(m_pSchema->GetRelationAttr(), pClass->name, &pClass->classXml);
    for (const QTBSchemaNode* pParent = pNode->GetParentPtr(); pParent != nullptr; pParent = pParent->GetParentPtr()) {
        pClass->parentClassesXml += pClass->parentClassesXml.empty() ? "<parentClasses><class>" : "<class>";
        CATXMLWriter::AppendText(pParent->GetName().View(), &pClass->parentClassesXml);
        pClass->parentClassesXml += "</class>";
    }
    if (!pClass->parentClassesXml.empty()) {
        pClass->parentClassesXml += "</parentClasses>";
    }
}

std::int64_t QTBStoreClasses::Find(Names& names, const CATUnicodeString& usName)
{
    const auto known = names.ids.find(usName);
    if (known != names.ids.end()) {
        return known->second;
    }
    QTBStoreStatement statement = m_Database.Prepare(names.find);
    if (!statement.Bind(1, usName).Step()) {
        return 0;
    }
    return names.ids.emplace(usName, statement.GetInt(0)).first->second;
}

std::int64_t QTBStoreClasses::Require(Names& names, const CATUnicodeString& usName)
{
    if (const std::int64_t id = Find(names, usName); id != 0) {
        return id;
    }
    m_Database.Prepare(names.insert).Bind(1, usName).Run();
    return names.ids.emplace(usName, m_Database.GetLastInsertId()).first->second;
}

std::int64_t QTBStoreClasses::FindClass(const CATUnicodeString& usName)
{
    return Find(m_ClassNames, usName);
}

std::int64_t QTBStoreClasses::RequireClass(const CATUnicodeString& usName)
{
    return Require(m_ClassNames, usName);
}

std::int64_t QTBStoreClasses::FindAttribute(const CATUnicodeString& usName)
{
    return Find(m_AttributeNames, usName);
}

std::int64_t QTBStoreClasses::RequireAttribute(const CATUnicodeString& usName)
{
    return Require(m_AttributeNames, usName);
}

void QTBStoreClasses::SetBaseName(std::int64_t id, const CATUnicodeString& usBaseName)
{
    if (Get(id).baseName == usBaseName) {
        return;
    }
    m_Database.Prepare("UPDATE class SET base_name = ? WHERE id = ?").Bind(1, usBaseName).Bind(2, id).Run();
    m_Classes.erase(id);
}

void QTBStoreClasses::LoadAll()
{
    std::vector<std::int64_t> ids;
    QTBStoreStatement statement = m_Database.Prepare("SELECT id FROM class ORDER BY id");
    while (statement.Step()) {
        ids.push_back(statement.GetInt(0));
    }
    for (const std::int64_t id : ids) {
        Get(id);
    }
}

std::vector<std::int64_t> QTBStoreClasses::GetObjectKinds(const CATUnicodeString& usName)
{
    if (m_pSchema->FindObject(usName) == nullptr && FindClass(usName) == 0) {
        throw QTBStoreFailure("ObjectClassUnknownERR_1108", usName);
    }
    LoadAll();
    std::vector<std::int64_t> ids;
    for (const auto& [id, pClass] : m_Classes) {
        const QTBSchemaObject* pObject = m_pSchema->FindObject(pClass->name);
        if (pObject == nullptr && !pClass->baseName.IsEmpty()) {
            pObject = m_pSchema->FindObject(pClass->baseName);
        }
        if (pClass->name == usName || (pObject != nullptr && pObject->IsKindOf(usName))) {
            ids.push_back(id);
        }
    }
    std::sort(ids.begin(), ids.end());
    return ids;
}

std::vector<std::int64_t> QTBStoreClasses::GetRelationKinds(const CATUnicodeString& usName)
{
    QTBSchemaRelation* pRelation = nullptr;
    if (FAILED(m_pSchema->GetRelationPtr(usName, &pRelation))) {
        throw QTBStoreFailure("RelationClassUnknownERR_1109", usName);
    }
    std::vector<std::int64_t> ids;
    for (int i = 1; i <= m_pSchema->GetRelationCount(); ++i) {
        QTBSchemaRelation* pOther = nullptr;
        if (SUCCEEDED(m_pSchema->GetRelationPtr(i, &pOther)) && pOther->IsKindOf(usName)) {
            if (const std::int64_t id = FindClass(pOther->GetName()); id != 0) {
                ids.push_back(id);
            }
        }
    }
    return ids;
}
