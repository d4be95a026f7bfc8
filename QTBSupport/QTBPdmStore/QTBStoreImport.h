#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <unordered_set>

#include "CATDOMElementView.h"
#include "QTBStoreChanging.h"
#include "QTBStoreImportReport.h"

struct QTBStoreRecord;

// Takes answers into the store, all of one answer or nothing. Items that are there already are brought up to date,
// where the user may change them; equal ones are left alone.
class QTBStoreImport : public QTBStoreChanging
{
public:
    // fileFolder, unless empty, holds the files of file objects under their names; they are taken into the store too.
    QTBStoreImport(QTBStoreDatabase& database, const Caller& caller, const std::string& fileFolder,
                   QTBStoreFileChanges* pFiles);
    ~QTBStoreImport();

    // document is the document element of an answer.
    QTBStoreImportReport Run(const CATDOMElementView& document);

private:
    void ImportObject(const CATDOMElementView& item);
    void ImportRelation(const CATDOMElementView& item);
    // Ids of an object that relations may come from and of the newest version of one that they lead to; 0 when there is
    // no such object.
    std::int64_t FindLeft(const CATUnicodeString& usKey);
    std::int64_t FindRight(const CATUnicodeString& usKey);
    // The relation of the version before that this one goes on from; 0 for none.
    std::int64_t FindSuperseded(const QTBStoreRecord& record, std::int64_t leftId);
    void ImportDeletion(const CATDOMElementView& item);

    void AddObject(const QTBStoreRecord& record, QTBStoreObject* pObject);
    void ChangeObject(const QTBStoreRecord& record, QTBStoreObject* pObject);
    // Makes the object the newest version of another one, if there is such a one.
    void Supersede(const QTBStoreRecord& record, QTBStoreObject* pObject);
    void TakeFile(const QTBStoreRecord& record, QTBStoreObject* pObject);
    std::int64_t GetStateId(const QTBStoreRecord& record) const;
    void LeaveOut(const CATUnicodeString& usKey, const char* reason);
    // Raises the failure that says why the user may not change the object or what is below it. What the same import
    // brought may be in any state.
    void RequireChangeable(std::int64_t objectId);

    std::string m_FileFolder;
    CATUnicodeString m_FileNameAttr;
    // Objects that this import added; those by key that are newest versions too.
    std::unordered_set<std::int64_t> m_Added;
    std::unordered_map<std::string, std::int64_t> m_AddedKeys;
    QTBStoreImportReport m_Report;
};
