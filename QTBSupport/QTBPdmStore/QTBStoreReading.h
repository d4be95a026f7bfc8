#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "QTBStoreExpansion.h"
#include "QTBStoreQuery.h"
#include "QTBStoreRequest.h"

// The requests that read: each sees the store at one moment and writes its answer while it reads.
class QTBStoreReading : public QTBStoreRequest
{
public:
    QTBStoreReading(QTBStoreDatabase& database, const Caller& caller, std::string_view function);
    ~QTBStoreReading();

    // The items of those keys, objects before relations; each once.
    void GetItems(const std::vector<CATUnicodeString>& keys);

    // The objects that fit, those of one class together, each in the order in which they were made.
    void Query(const QTBStoreQuery& query);

    // The objects to begin with and everything that the relations lead to, the nearest objects first; each item once,
    // whatever circles there are. Takes no stack per level.
    void Expand(const QTBStoreExpansion& expansion);

    // All newest versions, or all versions, and the relations between them.
    void Export(bool newestVersionsOnly);

    // A function of the store that answers with objects as output arguments:
    //   getVersions      all versions of the object "key"
    //   getCheckedOut    what the user "user" has checked out; without it the caller
    //   getRoots         objects of the class "class" that no relation leads to
    void Invoke(const CATUnicodeString& usFunction,
                const std::vector<std::pair<CATUnicodeString, CATUnicodeString>>& arguments);

private:
    struct Statements;

    // What is remembered of an object that was reached.
    struct Reached
    {
        // Whether the user may change the relations below it.
        bool isChangeable;
        // An older version was asked for beside it, so it takes no other's place.
        bool standsApart;
    };
    // An object that is to be expanded.
    struct Waiting
    {
        std::int64_t id;
        std::int64_t classId;
        std::string key;
        Reached reached;
    };
    // A class of relations that is followed in one direction.
    struct Followed
    {
        bool isLeftToRight;
        std::int64_t classId;

        friend bool operator==(const Followed&, const Followed&) = default;
    };

    std::vector<Followed> GetFollowed(const QTBStoreExpansion& expansion);
    void AnswerReached(const QTBStoreObject& object);
    // Answers the object unless it was reached before; it waits for its expansion then.
    Reached Reach(Statements& statements, std::int64_t id, std::vector<Waiting>* pNext);
    void Follow(Statements& statements, const Waiting& from, const Followed& followed, std::vector<Waiting>* pNext);
    // Notes the objects of which older versions are asked for.
    void NoteOlderVersion(const QTBStoreObject& object);

    void AnswerRow(const QTBStoreStatement& row, const QTBStoreAnswer::Superseding& superseding);
    bool Fits(const QTBStoreObject& object, const QTBStoreQuery::Condition& condition);
    // Answers the rows that fit; false when the limit was reached.
    bool AnswerMatches(QTBStoreStatement& rows, const QTBStoreQuery& query);
    void QueryThroughIndex(const QTBStoreQuery& query, const QTBStoreQuery::Condition& condition);

    std::unordered_map<std::int64_t, Reached> m_Reached;
    // Relations that were answered; only when they may be met from both ends.
    std::unordered_set<std::int64_t> m_AnsweredRelations;
    bool m_bBothDirections = false;
    // First versions of the objects of which older versions were asked for.
    std::unordered_set<std::int64_t> m_OlderVersions;
    // Classes that a query looks for; any when it names none.
    std::unordered_set<std::int64_t> m_QueriedClasses;
    int m_MatchCount = 0;
    // The row at hand, so that its texts keep their memory.
    QTBStoreObject m_Object;
    QTBStoreRelation m_Relation;
};
