#include "QTBStoreImport.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "QTBPdmSessionUtil.h"
#include "QTBSchema.h"
#include "QTBStoreDatabase.h"
#include "QTBStoreFailure.h"
#include "QTBStoreRecord.h"
#include "QTBStoreVersion.h"

namespace fs = std::filesystem;

namespace {

const QTBStoreAnswer::Sink NO_ANSWER;

// The one function element of an answer.
CATDOMElementView FindFunction(const CATDOMElementView& document)
{
    CATDOMElementView function;
    int count = 0;
    for (CATDOMElementView child = document.GetFirstChild(); child; child = child.GetNextSibling()) {
        if (child.HasTagName("function")) {
            function = child;
            ++count;
        }
    }
    if (count != 1) {
        throw QTBStoreFailure("AnswerWithoutFunctionERR_1121");
    }
    return function;
}

// Calls the receiver for each child element of that tag.
template <class Receiver>
void ForEachChild(const CATDOMElementView& element, std::string_view tag, Receiver receive)
{
    for (CATDOMElementView child = element.GetFirstChild(); child; child = child.GetNextSibling()) {
        if (child.HasTagName(tag)) {
            receive(child);
        }
    }
}

// Calls the receiver for each element of that tag, whatever its depth.
template <class Receiver>
void ForEachBelow(const CATDOMElementView& root, std::string_view tag, Receiver receive)
{
    for (CATDOMElementView element = root.GetFirstChild(); element; element = element.GetNextBelow(root)) {
        if (element.HasTagName(tag)) {
            receive(element);
        }
    }
}

} // namespace

QTBStoreImport::QTBStoreImport(QTBStoreDatabase& database, const Caller& caller, const std::string& fileFolder,
                               QTBStoreFileChanges* pFiles)
    : QTBStoreChanging(database, {caller.user, caller.isHeld, NO_ANSWER}, "import", pFiles), m_FileFolder(fileFolder)
{
    QTBPdmSessionUtil::GetPdmSessionStringAttrValue(QTB_PDM_SESSION_FILE_NAME_ATTR, &m_FileNameAttr, FALSE);
}

QTBStoreImport::~QTBStoreImport() = default;

QTBStoreImportReport QTBStoreImport::Run(const CATDOMElementView& document)
{
    const CATDOMElementView function = FindFunction(document);
    const auto importObject = [this](const CATDOMElementView& item) { ImportObject(item); };
    const CATDOMAttributeView name = function.FindAttribute("name");
    if (name && name.GetValue() == "dynamicInvoke") {
        ForEachChild(function, "outArgs", [&importObject](const CATDOMElementView& outArgs) {
            ForEachChild(outArgs, "arg",
                         [&importObject](const CATDOMElementView& arg) { ForEachChild(arg, "o", importObject); });
        });
    } else {
        ForEachChild(function, "o", importObject);
    }
    ForEachBelow(document, "r", [this](const CATDOMElementView& item) { ImportRelation(item); });
    for (const char* tag : {"objectToDelete", "relationToDelete"}) {
        ForEachBelow(document, tag, [this](const CATDOMElementView& item) { ImportDeletion(item); });
    }
    Finish();
    return m_Report;
}

void QTBStoreImport::LeaveOut(const CATUnicodeString& usKey, const char* reason)
{
    if (++m_Report.itemsLeftOut <= QTBStoreImportReport::MAX_NAMED) {
        m_Report.leftOut.Append(usKey.IsEmpty() ? CATUnicodeString(reason) : usKey + ": " + reason);
    }
}

void QTBStoreImport::RequireChangeable(std::int64_t objectId)
{
    if (m_Added.count(objectId) == 0) {
        QTBStoreObject object;
        m_Items.ReadObject(objectId, &object);
        Require(RightsOf(object).changeStructure, object);
    }
}

std::int64_t QTBStoreImport::GetStateId(const QTBStoreRecord& record) const
{
    if (record.state.IsEmpty()) {
        return m_Lifecycle.GetFirst().id;
    }
    const QTBStoreLifecycle::State* pState = m_Lifecycle.FindByName(record.state);
    if (pState == nullptr) {
        throw QTBStoreFailure("StateUnknownERR_1122", record.state, record.key, m_Lifecycle.GetNames());
    }
    return pState->id;
}

// Objects.

void QTBStoreImport::ImportObject(const CATDOMElementView& item)
{
    const QTBSchema& schema = m_Classes.GetSchema();
    const QTBStoreRecord record = QTBStoreRecord::Read(item, schema);
    if (record.key.IsEmpty()) {
        LeaveOut(record.key, "object without a key");
        return;
    }
    const bool isKnown = schema.FindObject(record.className) != nullptr;
    if (!isKnown && schema.FindObject(record.relevantBaseClass) == nullptr) {
        LeaveOut(record.key, "the schema does not know its class");
        return;
    }
    QTBStoreObject object;
    const bool isThere = m_Items.FindObject(record.key.View(), &object);
    const std::int64_t classId = m_Classes.RequireClass(record.className);
    if (!isKnown) {
        m_Classes.SetBaseName(classId, record.relevantBaseClass);
    }
    if (!isThere) {
        object.classId = classId;
        AddObject(record, &object);
        ++m_Report.objectsAdded;
    } else if (object.classId != classId || object.record != record.attributes || object.info != record.info) {
        object.classId = classId;
        ChangeObject(record, &object);
        ++m_Report.objectsChanged;
    } else {
        ++m_Report.itemsUnchanged;
    }
    TakeFile(record, &object);
}

void QTBStoreImport::AddObject(const QTBStoreRecord& record, QTBStoreObject* pObject)
{
    if (m_Items.IsRelationKey(record.key.View())) {
        throw QTBStoreFailure("KeyTakenERR_1114", record.key);
    }
    pObject->key = record.key.View();
    pObject->record = record.attributes;
    pObject->info = record.info;
    if (ClassOf(*pObject).isVersioned) {
        pObject->stateId = GetStateId(record);
        pObject->version = record.version.IsEmpty() ? QTBStoreVersion::FIRST : record.version.View();
        Supersede(record, pObject);
    }
    m_Items.Insert(pObject, record.className);
    m_Items.IndexAttributes(pObject->id, record.strings, m_Classes);
    m_Added.insert(pObject->id);
    m_AddedKeys.emplace(pObject->key, pObject->id);
    if (pObject->supersedesId != 0) {
        m_Database.Prepare("UPDATE relation SET right_id = ? WHERE right_id = ?")
            .Bind(1, pObject->id)
            .Bind(2, pObject->supersedesId)
            .Run();
    }
}

void QTBStoreImport::Supersede(const QTBStoreRecord& record, QTBStoreObject* pObject)
{
    QTBStoreObject earlier;
    if (record.supersedes.IsEmpty() || !m_Items.FindObject(record.supersedes.View(), &earlier) || !earlier.isNewest ||
        earlier.stateId == 0) {
        return;
    }
    const std::vector<QTBStoreObject> versions = m_Items.GetVersions(earlier);
    if (record.version.IsEmpty()) {
        pObject->version = QTBStoreVersion::GetNext(earlier.version);
    }
    while (std::any_of(versions.begin(), versions.end(),
                       [pObject](const QTBStoreObject& version) { return version.version == pObject->version; })) {
        pObject->version = QTBStoreVersion::GetNext(pObject->version);
    }
    Require(earlier.checkedOutBy.empty(), earlier);
    earlier.isNewest = false;
    m_Items.Update(earlier);
    m_AddedKeys.erase(earlier.key);
    pObject->firstId = earlier.firstId;
    pObject->supersedesId = earlier.id;
}

void QTBStoreImport::ChangeObject(const QTBStoreRecord& record, QTBStoreObject* pObject)
{
    RequireChangeable(pObject->id);
    if (ClassOf(*pObject).isVersioned != (pObject->stateId != 0)) {
        throw QTBStoreFailure("KeyTakenERR_1114", record.key);
    }
    pObject->record = record.attributes;
    pObject->info = record.info;
    m_Items.Update(*pObject);
    m_Items.ReindexAttributes(pObject->id, record.strings, m_Classes);
}

void QTBStoreImport::TakeFile(const QTBStoreRecord& record, QTBStoreObject* pObject)
{
    if (m_FileFolder.empty() || m_FileNameAttr.IsEmpty() || !ClassOf(*pObject).isFile) {
        return;
    }
    const auto name = std::find_if(record.strings.begin(), record.strings.end(),
                                   [this](const auto& attribute) { return attribute.first == m_FileNameAttr; });
    if (name == record.strings.end()) {
        return;
    }
    // A name is no path: what the answer says must not lead out of the folder.
    const fs::path fileName(std::string(name->second.View()));
    const fs::path path = fs::path(m_FileFolder) / fileName.filename();
    std::error_code error;
    if (fileName.has_parent_path() || !fs::is_regular_file(path, error)) {
        return;
    }
    const std::int64_t fileId = KeepFile(*QTBStoreFiles(m_Database).Take(path.c_str()));
    if (fileId != pObject->fileId) {
        if (pObject->fileId != 0) {
            RequireChangeable(pObject->id);
            ReleaseFile(*pObject);
        }
        pObject->fileId = fileId;
        m_Items.Update(*pObject);
        ++m_Report.filesAdded;
    }
}

// Relations.

void QTBStoreImport::ImportRelation(const CATDOMElementView& item)
{
    const QTBSchema& schema = m_Classes.GetSchema();
    const QTBStoreRecord record = QTBStoreRecord::Read(item, schema);
    const CATUnicodeString& usClass = record.relation.IsEmpty() ? record.className : record.relation;
    QTBSchemaRelation* pRelation = nullptr;
    if (record.key.IsEmpty()) {
        LeaveOut(record.key, "relation without a key");
        return;
    }
    if (FAILED(schema.GetRelationPtr(usClass, &pRelation))) {
        LeaveOut(record.key, "the schema does not know its class");
        return;
    }
    const std::int64_t leftId = FindLeft(record.left);
    const std::int64_t rightId = FindRight(record.right);
    if (leftId == 0 || rightId == 0) {
        LeaveOut(record.key, "an object of the relation is missing");
        return;
    }
    QTBStoreRelation relation;
    const bool isThere = m_Items.FindRelation(record.key.View(), &relation);
    if (!isThere && m_Items.IsObjectKey(record.key.View())) {
        throw QTBStoreFailure("KeyTakenERR_1114", record.key);
    }
    const std::int64_t classId = m_Classes.RequireClass(usClass);
    if (isThere && relation.classId == classId && relation.leftId == leftId && relation.rightId == rightId &&
        relation.record == record.attributes && relation.info == record.info) {
        ++m_Report.itemsUnchanged;
        return;
    }
    RequireChangeable(leftId);
    if (isThere && relation.leftId != leftId) {
        RequireChangeable(relation.leftId);
        relation.supersedesId = 0;
    }
    relation.classId = classId;
    relation.leftId = leftId;
    relation.rightId = rightId;
    relation.record = record.attributes;
    relation.info = record.info;
    if (isThere) {
        m_Items.Update(relation);
        ++m_Report.relationsChanged;
        return;
    }
    relation.key = record.key.View();
    relation.supersedesId = FindSuperseded(record, leftId);
    m_Items.Insert(&relation, usClass);
    ++m_Report.relationsAdded;
}

std::int64_t QTBStoreImport::FindLeft(const CATUnicodeString& usKey)
{
    if (const auto added = m_AddedKeys.find(std::string(usKey.View())); added != m_AddedKeys.end()) {
        return added->second;
    }
    QTBStoreObject object;
    return m_Items.FindObject(usKey.View(), &object) ? object.id : 0;
}

std::int64_t QTBStoreImport::FindRight(const CATUnicodeString& usKey)
{
    if (const auto added = m_AddedKeys.find(std::string(usKey.View())); added != m_AddedKeys.end()) {
        return added->second;
    }
    QTBStoreObject object;
    return m_Items.FindObject(usKey.View(), &object) ? m_Items.GetNewest(object).id : 0;
}

std::int64_t QTBStoreImport::FindSuperseded(const QTBStoreRecord& record, std::int64_t leftId)
{
    QTBStoreObject left;
    QTBStoreRelation earlier;
    const bool goesOn = !record.supersedes.IsEmpty() && m_Items.FindRelation(record.supersedes.View(), &earlier) &&
                        m_Items.ReadObject(leftId, &left) && left.supersedesId == earlier.leftId;
    return goesOn ? earlier.id : 0;
}

void QTBStoreImport::ImportDeletion(const CATDOMElementView& item)
{
    // What the graph does not hold it ignores likewise.
    const CATUnicodeString usKey = item.GetText();
    if (m_Items.KeyIsTaken(usKey.View())) {
        DeleteItem(usKey, CATUnicodeString());
        ++m_Report.itemsDeleted;
    }
}
