#pragma once

#include <string_view>
#include <vector>

#include "CATUnicodeString.h"
#include "QTBStoreAnswer.h"
#include "QTBStoreClasses.h"
#include "QTBStoreFiles.h"
#include "QTBStoreItem.h"
#include "QTBStoreItems.h"
#include "QTBStoreLifecycle.h"
#include "QTBStoreRights.h"
#include "QTBStoreTransaction.h"

class QTBStoreDatabase;

// What every request of the store works with, inside its one transaction: the items, their classes and states, the
// user and the answer. Failures raise QTBStoreFailure and undo the request.
class QTBStoreRequest
{
public:
    struct Caller
    {
        const CATUnicodeString& user;
        const QTBStoreAnswer::IsHeld& isHeld;
        const QTBStoreAnswer::Sink& sink;
    };

    // function is the name of the answer's function element.
    QTBStoreRequest(QTBStoreDatabase& database, const Caller& caller, QTBStoreTransaction::Kind kind,
                    std::string_view function);
    QTBStoreRequest(const QTBStoreRequest&) = delete;
    QTBStoreRequest& operator=(const QTBStoreRequest&) = delete;

protected:
    ~QTBStoreRequest();

    // The keys of a request without those that came before; a key that is given twice is meant once.
    static std::vector<CATUnicodeString> EachOnce(const std::vector<CATUnicodeString>& keys);

    // Ends the answer and the transaction.
    void Finish();

    QTBStoreRights RightsOf(const QTBStoreObject& object);
    const QTBStoreClass& ClassOf(const QTBStoreObject& object) { return m_Classes.Get(object.classId); }
    const QTBStoreClass& ClassOf(const QTBStoreRelation& relation) { return m_Classes.Get(relation.classId); }

    void Answer(const QTBStoreObject& object, const QTBStoreAnswer::Superseding& superseding = {});
    // Reads the objects at the ends.
    void Answer(const QTBStoreRelation& relation, const QTBStoreAnswer::Superseding& superseding = {});

    QTBStoreDatabase& m_Database;
    const CATUnicodeString& m_User;

private:
    QTBStoreTransaction m_Transaction;

protected:
    QTBStoreClasses m_Classes;
    const QTBStoreLifecycle m_Lifecycle;
    QTBStoreItems m_Items;
    QTBStoreAnswer m_Answer;
};
