#pragma once

#include <cstddef>
#include <initializer_list>
#include <random>
#include <string>

#include "SessionStep.h"

// Makes the steps of a session up. The same number gives the same session, on every platform.
class SessionMaker
{
public:
    // In every other session answers may contradict each other.
    explicit SessionMaker(unsigned int seed)
        : m_Random(seed), m_Answers(seed % 2 == 0 ? QTBAnswers::Contradict : QTBAnswers::MoveRelations)
    {
    }

    SessionSteps Make(std::size_t count);

private:
    std::size_t Random(std::size_t count) { return m_Random() % count; }
    bool Chance(std::size_t percent) { return Random(100) < percent; }
    const char* AnyOf(std::initializer_list<const char*> texts) { return texts.begin()[Random(texts.size())]; }

    std::string AnyObject();
    std::string AnyRelation();
    std::string AnyKey() { return Chance(75) ? AnyObject() : AnyRelation(); }
    // A node as the shell names it.
    std::string AnyNode() { return Chance(60) ? AnyKey() : std::to_string(1 + Random(12)); }
    std::string AnyRelationsToExpand();

    // The class of a relation, and one that it may supersede.
    const char* ClassOf(const std::string& relationKey);
    std::string AnyPredecessor(const std::string& relationKey);

    std::string MakeObject(const std::string& key);
    std::string MakeRelation(const std::string& key);
    std::string MakeItems();
    std::string MakeProducts();
    SessionStep MakeAnswer();
    SessionStep MakeAnswerStep(const std::string& command, const std::string& kind);
    SessionStep MakeAssembly();
    SessionStep MakeStoreRequest();
    SessionStep MakeStep();

    std::mt19937 m_Random;
    QTBAnswers m_Answers;
    int m_Files = 0;
};
