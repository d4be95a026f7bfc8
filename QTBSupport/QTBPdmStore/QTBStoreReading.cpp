#include "QTBStoreReading.h"

#include <algorithm>

#include "QTBSchema.h"
#include "QTBStoreDatabase.h"
#include "QTBStoreFailure.h"
#include "QTBStoreRecord.h"

namespace {

using Superseding = QTBStoreAnswer::Superseding;

const Superseding NOTHING{Superseding::Kind::None};

std::string ObjectQuery(std::string_view condition)
{
    return std::string("SELECT ")
        .append(QTBStoreItems::OBJECT_COLUMNS)
        .append(QTBStoreItems::OBJECT_SOURCE)
        .append(condition);
}

// Relations at one end of an object, with key and class of the object at the other end.
std::string RelationQuery(std::string_view nearEnd, std::string_view farEnd)
{
    return std::string("SELECT ")
        .append(QTBStoreItems::RELATION_COLUMNS)
        .append(", x.key, x.class_id FROM relation r JOIN object x ON x.id = r.")
        .append(farEnd)
        .append(" WHERE r.")
        .append(nearEnd)
        .append(" = ?1 AND r.class_id = ?2 ORDER BY r.id");
}

bool HasStar(const CATUnicodeString& usPattern)
{
    return usPattern.View().find('*') != std::string_view::npos;
}

// Whether the text is the pattern with something, or nothing, in place of each star.
bool Matches(std::string_view text, std::string_view pattern)
{
    std::size_t textAt = 0;
    std::size_t patternAt = 0;
    std::size_t lastStar = std::string_view::npos;
    std::size_t textAtLastStar = 0;
    while (textAt < text.size()) {
        if (patternAt < pattern.size() && pattern[patternAt] == '*') {
            lastStar = patternAt++;
            textAtLastStar = textAt;
        } else if (patternAt < pattern.size() && pattern[patternAt] == text[textAt]) {
            ++patternAt;
            ++textAt;
        } else if (lastStar != std::string_view::npos) {
            patternAt = lastStar + 1;
            textAt = ++textAtLastStar;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', patternAt) == std::string_view::npos;
}

} // namespace

// Statements of an expansion, which are used for every object.
struct QTBStoreReading::Statements
{
    explicit Statements(QTBStoreDatabase& database)
        : object(database.Prepare(ObjectQuery("WHERE o.id = ?"))),
          below(database.Prepare(RelationQuery("left_id", "right_id"))),
          above(database.Prepare(RelationQuery("right_id", "left_id")))
    {
    }

    QTBStoreStatement object;
    QTBStoreStatement below;
    QTBStoreStatement above;
};

QTBStoreReading::QTBStoreReading(QTBStoreDatabase& database, const Caller& caller, std::string_view function)
    : QTBStoreRequest(database, caller, QTBStoreTransaction::Kind::Read, function)
{
}

QTBStoreReading::~QTBStoreReading() = default;

void QTBStoreReading::GetItems(const std::vector<CATUnicodeString>& keys)
{
    std::vector<QTBStoreObject> objects;
    std::vector<QTBStoreRelation> relations;
    for (const CATUnicodeString& usKey : EachOnce(keys)) {
        if (m_Items.GetItem(usKey, &m_Object, &m_Relation)) {
            NoteOlderVersion(m_Object);
            objects.push_back(m_Object);
        } else {
            relations.push_back(m_Relation);
        }
    }
    for (const QTBStoreObject& object : objects) {
        Answer(object, m_OlderVersions.count(object.firstId) != 0 ? NOTHING : Superseding());
    }
    for (const QTBStoreRelation& relation : relations) {
        Answer(relation);
    }
    Finish();
}

void QTBStoreReading::NoteOlderVersion(const QTBStoreObject& object)
{
    if (!object.isNewest) {
        m_OlderVersions.insert(object.firstId);
    }
}

// Expansion.

std::vector<QTBStoreReading::Followed> QTBStoreReading::GetFollowed(const QTBStoreExpansion& expansion)
{
    std::vector<Followed> all;
    for (const QTBStoreExpansion::Relation& relation : expansion.relations) {
        for (const std::int64_t classId : m_Classes.GetRelationKinds(relation.name)) {
            const Followed followed{relation.isLeftToRight, classId};
            // A class and its subclass may both be asked for.
            if (std::find(all.begin(), all.end(), followed) == all.end()) {
                all.push_back(followed);
            }
        }
    }
    return all;
}

void QTBStoreReading::Expand(const QTBStoreExpansion& expansion)
{
    const std::vector<Followed> all = GetFollowed(expansion);
    const auto goesRight = [](const Followed& followed) { return followed.isLeftToRight; };
    m_bBothDirections =
        std::any_of(all.begin(), all.end(), goesRight) && !std::all_of(all.begin(), all.end(), goesRight);

    std::vector<std::int64_t> roots;
    for (const CATUnicodeString& usKey : EachOnce(expansion.keys)) {
        const QTBStoreObject object = m_Items.GetObject(usKey);
        NoteOlderVersion(object);
        roots.push_back(object.id);
    }
    Statements statements(m_Database);
    std::vector<Waiting> waiting;
    for (const std::int64_t id : roots) {
        Reach(statements, id, &waiting);
    }
    for (int level = 0; level != expansion.levels && !waiting.empty(); ++level) {
        std::vector<Waiting> next;
        for (const Waiting& from : waiting) {
            for (const Followed& followed : all) {
                Follow(statements, from, followed, &next);
            }
        }
        waiting = std::move(next);
    }
    Finish();
}

void QTBStoreReading::AnswerReached(const QTBStoreObject& object)
{
    const QTBStoreRights rights = RightsOf(object);
    const Reached reached{rights.changeStructure, m_OlderVersions.count(object.firstId) != 0};
    m_Answer.AddObject(object, rights, reached.standsApart ? NOTHING : Superseding());
    m_Reached.emplace(object.id, reached);
}

QTBStoreReading::Reached QTBStoreReading::Reach(Statements& statements, std::int64_t id, std::vector<Waiting>* pNext)
{
    if (const auto known = m_Reached.find(id); known != m_Reached.end()) {
        return known->second;
    }
    if (!statements.object.Bind(1, id).Step()) {
        m_Database.RaiseDamaged("object " + std::to_string(id) + " is missing");
    }
    m_Items.ReadObject(statements.object, &m_Object);
    AnswerReached(m_Object);
    const Reached reached = m_Reached.at(id);
    pNext->push_back({id, m_Object.classId, m_Object.key, reached});
    return reached;
}

void QTBStoreReading::Follow(Statements& statements, const Waiting& from, const Followed& followed,
                             std::vector<Waiting>* pNext)
{
    QTBStoreStatement& rows = followed.isLeftToRight ? statements.below : statements.above;
    rows.Bind(1, from.id).Bind(2, followed.classId);
    while (rows.Step()) {
        m_Items.ReadRelation(rows, &m_Relation);
        const Reached far = Reach(statements, followed.isLeftToRight ? m_Relation.rightId : m_Relation.leftId, pNext);
        if (m_bBothDirections && !m_AnsweredRelations.insert(m_Relation.id).second) {
            continue;
        }
        const QTBStoreAnswer::End nearEnd{from.key, from.classId};
        const QTBStoreAnswer::End farEnd{rows.GetText(QTBStoreItems::RELATION_COLUMN_COUNT),
                                         rows.GetInt(QTBStoreItems::RELATION_COLUMN_COUNT + 1)};
        const Reached& left = followed.isLeftToRight ? from.reached : far;
        m_Answer.AddRelation(m_Relation, followed.isLeftToRight ? nearEnd : farEnd,
                             followed.isLeftToRight ? farEnd : nearEnd, left.isChangeable,
                             left.standsApart ? NOTHING : Superseding());
    }
}

void QTBStoreReading::Export(bool newestVersionsOnly)
{
    {
        QTBStoreStatement rows = m_Database.Prepare(ObjectQuery("WHERE o.is_newest >= ? ORDER BY o.id"));
        rows.Bind(1, std::int64_t{newestVersionsOnly});
        while (rows.Step()) {
            m_Items.ReadObject(rows, &m_Object);
            AnswerReached(m_Object);
        }
    }
    const std::string query = std::string("SELECT ")
                                  .append(QTBStoreItems::RELATION_COLUMNS)
                                  .append(", l.key, l.class_id, x.key, x.class_id FROM relation r "
                                          "JOIN object l ON l.id = r.left_id JOIN object x ON x.id = r.right_id "
                                          "WHERE l.is_newest >= ? ORDER BY r.id");
    constexpr int LEFT = QTBStoreItems::RELATION_COLUMN_COUNT;
    QTBStoreStatement rows = m_Database.Prepare(query);
    rows.Bind(1, std::int64_t{newestVersionsOnly});
    while (rows.Step()) {
        m_Items.ReadRelation(rows, &m_Relation);
        const auto left = m_Reached.find(m_Relation.leftId);
        m_Answer.AddRelation(m_Relation, {rows.GetText(LEFT), rows.GetInt(LEFT + 1)},
                             {rows.GetText(LEFT + 2), rows.GetInt(LEFT + 3)},
                             left != m_Reached.end() && left->second.isChangeable, {});
    }
    rows.Reset();
    Finish();
}

// Queries.

bool QTBStoreReading::Fits(const QTBStoreObject& object, const QTBStoreQuery::Condition& condition)
{
    if (condition.name == m_Classes.GetSchema().GetKeyAttr()) {
        return Matches(object.key, condition.value.View());
    }
    if (condition.name == QTBStoreRecord::STATE_ATTR) {
        return object.stateId != 0 && Matches(m_Lifecycle.Get(object.stateId).name.View(), condition.value.View());
    }
    QTBStoreStatement statement =
        m_Database.Prepare("SELECT value FROM object_attribute WHERE object_id = ? AND attribute_id = ?");
    statement.Bind(1, object.id).Bind(2, m_Classes.FindAttribute(condition.name));
    return statement.Step() && Matches(statement.GetText(0), condition.value.View());
}

bool QTBStoreReading::AnswerMatches(QTBStoreStatement& rows, const QTBStoreQuery& query)
{
    while (rows.Step()) {
        m_Items.ReadObject(rows, &m_Object);
        if ((query.newestVersionsOnly && !m_Object.isNewest) ||
            (!query.className.IsEmpty() && m_QueriedClasses.count(m_Object.classId) == 0) ||
            !std::all_of(query.conditions.begin(), query.conditions.end(),
                         [this](const QTBStoreQuery::Condition& condition) { return Fits(m_Object, condition); })) {
            continue;
        }
        Answer(m_Object, query.newestVersionsOnly ? Superseding() : NOTHING);
        if (++m_MatchCount == query.maxCount) {
            return false;
        }
    }
    return true;
}

void QTBStoreReading::QueryThroughIndex(const QTBStoreQuery& query, const QTBStoreQuery::Condition& condition)
{
    const std::string_view value = condition.value.View();
    const std::string from(value.substr(0, value.find('*')));
    // What follows the value, or any text that begins with the same characters: none has this byte behind them.
    const std::string to = from + (HasStar(condition.value) ? '\xFF' : '\0');
    if (condition.name == m_Classes.GetSchema().GetKeyAttr()) {
        QTBStoreStatement rows = m_Database.Prepare(ObjectQuery("WHERE o.key >= ? AND o.key < ? ORDER BY o.key"));
        rows.Bind(1, std::string_view{from}).Bind(2, std::string_view{to});
        AnswerMatches(rows, query);
        return;
    }
    const std::int64_t attributeId = m_Classes.FindAttribute(condition.name);
    if (attributeId == 0) {
        return;
    }
    const std::string columns = "SELECT " + std::string(QTBStoreItems::OBJECT_COLUMNS) +
                                " FROM object_attribute a JOIN object o ON o.id = a.object_id "
                                "LEFT JOIN checkout c ON c.object_id = o.id WHERE a.attribute_id = ? AND ";
    if (HasStar(condition.value)) {
        QTBStoreStatement rows =
            m_Database.Prepare(columns + "a.value >= ? AND a.value < ? ORDER BY a.value, a.object_id");
        rows.Bind(1, attributeId).Bind(2, std::string_view{from}).Bind(3, std::string_view{to});
        AnswerMatches(rows, query);
    } else {
        QTBStoreStatement rows = m_Database.Prepare(columns + "a.value = ? ORDER BY a.object_id");
        rows.Bind(1, attributeId).Bind(2, value);
        AnswerMatches(rows, query);
    }
}

void QTBStoreReading::Query(const QTBStoreQuery& query)
{
    std::vector<std::int64_t> classes;
    if (!query.className.IsEmpty()) {
        classes = m_Classes.GetObjectKinds(query.className);
        m_QueriedClasses.insert(classes.begin(), classes.end());
    }
    // The condition that leaves the fewest objects to look at: a value, then the beginning of one.
    const auto isIndexed = [](const QTBStoreQuery::Condition& condition) {
        return condition.name != QTBStoreRecord::STATE_ATTR;
    };
    auto best = std::find_if(query.conditions.begin(), query.conditions.end(),
                             [&](const auto& condition) { return isIndexed(condition) && !HasStar(condition.value); });
    if (best == query.conditions.end()) {
        best = std::find_if(query.conditions.begin(), query.conditions.end(), isIndexed);
    }
    if (best != query.conditions.end()) {
        QueryThroughIndex(query, *best);
    } else if (query.className.IsEmpty()) {
        QTBStoreStatement rows = m_Database.Prepare(ObjectQuery("ORDER BY o.id"));
        AnswerMatches(rows, query);
    } else {
        QTBStoreStatement rows =
            m_Database.Prepare(ObjectQuery("WHERE o.class_id = ? AND o.is_newest >= ? ORDER BY o.is_newest, o.id"));
        for (const std::int64_t classId : classes) {
            rows.Bind(1, classId).Bind(2, std::int64_t{query.newestVersionsOnly});
            if (!AnswerMatches(rows, query)) {
                break;
            }
        }
    }
    Finish();
}

// Functions.

void QTBStoreReading::AnswerRow(const QTBStoreStatement& row, const Superseding& superseding)
{
    m_Items.ReadObject(row, &m_Object);
    Answer(m_Object, superseding);
}

void QTBStoreReading::Invoke(const CATUnicodeString& usFunction,
                             const std::vector<std::pair<CATUnicodeString, CATUnicodeString>>& arguments)
{
    const auto getArgument = [&arguments](const char* name) {
        const auto found = std::find_if(arguments.begin(), arguments.end(),
                                        [name](const auto& argument) { return argument.first == name; });
        return found != arguments.end() ? found->second : CATUnicodeString();
    };
    if (usFunction == "getVersions") {
        const QTBStoreObject object = m_Items.GetObject(getArgument("key"));
        m_Answer.BeginOutArg("versions");
        for (const QTBStoreObject& version : m_Items.GetVersions(object)) {
            Answer(version, NOTHING);
        }
    } else if (usFunction == "getCheckedOut") {
        const CATUnicodeString usUser = getArgument("user");
        m_Answer.BeginOutArg("objects");
        QTBStoreStatement rows = m_Database.Prepare("SELECT " + std::string(QTBStoreItems::OBJECT_COLUMNS) +
                                                    " FROM checkout c JOIN object o ON o.id = c.object_id "
                                                    "WHERE c.user_name = ? ORDER BY o.id");
        rows.Bind(1, usUser.IsEmpty() ? m_User : usUser);
        while (rows.Step()) {
            AnswerRow(rows, Superseding());
        }
    } else if (usFunction == "getRoots") {
        const std::vector<std::int64_t> classes = m_Classes.GetObjectKinds(getArgument("class"));
        m_Answer.BeginOutArg("roots");
        QTBStoreStatement rows =
            m_Database.Prepare(ObjectQuery("WHERE o.class_id = ? AND o.is_newest = 1 AND NOT EXISTS "
                                           "(SELECT 1 FROM relation r WHERE r.right_id = o.id) ORDER BY o.id"));
        for (const std::int64_t classId : classes) {
            rows.Bind(1, classId);
            while (rows.Step()) {
                AnswerRow(rows, Superseding());
            }
        }
    } else {
        throw QTBStoreFailure("FunctionUnknownERR_1116", usFunction);
    }
    m_Answer.EndOutArg();
    Finish();
}
