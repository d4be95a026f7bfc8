#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "CATUnicodeString.h"
#include "QTBStoreRights.h"

class QTBSchema;
class QTBStoreClasses;
class QTBStoreDatabase;
class QTBStoreLifecycle;
struct QTBStoreObject;
struct QTBStoreRelation;

// Writes an answer in the form that docs/formats.md describes, piece by piece, as the items come.
class QTBStoreAnswer
{
public:
    using Sink = std::function<void(std::string_view)>;
    // Whether the session that the answer goes to holds the item of that key.
    using IsHeld = std::function<bool(const CATUnicodeString&)>;

    struct Surroundings
    {
        QTBStoreDatabase& database;
        QTBStoreClasses& classes;
        const QTBStoreLifecycle& lifecycle;
        const CATUnicodeString& user;
        const IsHeld& isHeld;
    };

    // function is the name of the answer's function element. An empty sink drops the answer.
    QTBStoreAnswer(const Surroundings& surroundings, const Sink& sink, std::string_view function);
    QTBStoreAnswer(const QTBStoreAnswer&) = delete;
    QTBStoreAnswer& operator=(const QTBStoreAnswer&) = delete;
    ~QTBStoreAnswer();

    // Which item of the session a version takes the place of.
    struct Superseding
    {
        enum class Kind
        {
            // The version before it; of several the newest that the session holds.
            Earlier,
            // None, because older versions are in the answer for their own sake.
            None,
            // The item of that key.
            Key
        };
        Kind kind = Kind::Earlier;
        std::string key{};
    };

    // rights are those of the user on the object; a relation's are those on its left object.
    void AddObject(const QTBStoreObject& object, const QTBStoreRights& rights, const Superseding& superseding);
    struct End
    {
        std::string_view key;
        std::int64_t classId;
    };
    void AddRelation(const QTBStoreRelation& relation, const End& left, const End& right, bool isEditAllowed,
                     const Superseding& superseding);
    void AddObjectToDelete(std::string_view key) { AddKey("objectToDelete", key); }
    void AddRelationToDelete(std::string_view key) { AddKey("relationToDelete", key); }

    // The objects between the two are an output argument of an invoked function.
    void BeginOutArg(std::string_view name);
    void EndOutArg();

    // Ends the answer and hands on what is left of it.
    void Finish();

private:
    void AddAttribute(std::string_view open, std::string_view value);
    void AddEntry(std::string_view name, std::string_view value);
    void AddFlag(std::string_view entry, bool value);
    void AddKey(std::string_view tag, std::string_view key);
    void AddVersion(const QTBStoreObject& object);
    void AddSuperseding(std::int64_t supersedesId, const char* query, const Superseding& superseding);
    void AddEnd(const std::string& keyOpen, const std::string& classOpen, const End& end);
    void FlushIfLong();
    void Flush();

    Surroundings m_Surroundings;
    const Sink& m_Sink;
    std::string m_Text;
    // Start tags of the attributes that identify items.
    std::string m_KeyOpen;
    std::string m_StateOpen;
    std::string m_LeftOpen;
    std::string m_RightOpen;
    std::string m_LeftClassOpen;
    std::string m_RightClassOpen;
};
