#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "QTBStoreRequest.h"

struct QTBStoreRecord;

// The requests that change the store: each is done as a whole or not at all, checks what the user may do, and answers
// with the items as they are now.
class QTBStoreChanging : public QTBStoreRequest
{
public:
    // *pFiles, which must outlive the request, takes what it does to the files: somebody has to look after them when
    // it is done, or has failed.
    QTBStoreChanging(QTBStoreDatabase& database, const Caller& caller, std::string_view function,
                     QTBStoreFileChanges* pFiles);
    ~QTBStoreChanging();

    void CheckOut(const std::vector<CATUnicodeString>& keys);

    // copies are the files that the objects have now, parallel to the keys; an empty pointer leaves the file as it is.
    using FileCopies = std::vector<std::unique_ptr<QTBStoreFileCopy>>;
    void CheckIn(const std::vector<CATUnicodeString>& keys, const FileCopies& copies);

    // Brings the objects into their next states. The relations below them come with the answer, because nobody may
    // change them any more.
    void Promote(const std::vector<CATUnicodeString>& keys);

    // Makes a new version of each object, in the first state, which takes the place of the old one: relations that led
    // to the old version lead to it; those of the old version stay with it and are made anew for the new one. A
    // check-out passes to the new version.
    void Revise(const std::vector<CATUnicodeString>& keys);

    // usXml holds "a" elements: these attributes take the place of those of the same names.
    void UpdateAttributes(const CATUnicodeString& usKey, const CATUnicodeString& usXml);

    // An empty key lets the store make one.
    void CreateObject(const CATUnicodeString& usClass, const CATUnicodeString& usKey, const CATUnicodeString& usXml);
    void CreateRelation(const CATUnicodeString& usClass, const CATUnicodeString& usLeftKey,
                        const CATUnicodeString& usRightKey, const CATUnicodeString& usXml);

    // Deletes relations, and objects with the relations at both their ends. Of an object with several versions only
    // the newest can be deleted, and the version before it takes its place again; the option "AllVersions" deletes
    // them all.
    void Delete(const std::vector<CATUnicodeString>& keys, const CATUnicodeString& usOption);

protected:
    // Raises the failure that says why, unless the flag is set.
    void Require(bool isAllowed, const QTBStoreObject& object);
    void DeleteItem(const CATUnicodeString& usKey, const CATUnicodeString& usOption);

    // The id of the file that the copy becomes.
    std::int64_t KeepFile(QTBStoreFileCopy& copy);
    // The object has its file no longer.
    void ReleaseFile(const QTBStoreObject& object);

private:
    QTBStoreObject GetObjectToChange(const CATUnicodeString& usKey, bool QTBStoreRights::*right);

    void ReviseObject(const CATUnicodeString& usKey);
    void DeleteRelation(const QTBStoreRelation& relation);
    void DeleteNewestVersion(const QTBStoreObject& object);
    void DeleteAllVersions(const QTBStoreObject& newest);
    void RemoveObject(const QTBStoreObject& object);
    void RequireUsersChangeable(const QTBStoreObject& object);

    QTBStoreFileChanges& m_Files;
};
