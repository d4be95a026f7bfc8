#pragma once

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
    QTBStoreImport(QTBStoreDatabase& database, const Caller& caller, const CATUnicodeString& usFileFolder);
    ~QTBStoreImport();

    // document is the document element of an answer.
    QTBStoreImportReport Run(const CATDOMElementView& document);

private:
    void ImportObject(const CATDOMElementView& item);
    void ImportRelation(const CATDOMElementView& item);
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
    void RequireChangeable(const QTBStoreObject& object);

    CATUnicodeString m_FileFolder;
    CATUnicodeString m_FileNameAttr;
    // Objects that this import added.
    std::unordered_set<std::int64_t> m_Added;
    QTBStoreImportReport m_Report;
};
