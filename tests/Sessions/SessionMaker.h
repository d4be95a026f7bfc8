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
    explicit SessionMaker(unsigned int seed) : m_Random(seed) {}

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

    std::string MakeObject(const std::string& key);
    std::string MakeRelation(const std::string& key);
    std::string MakeItems();
    std::string MakeProducts();
    SessionStep MakeAnswer();
    SessionStep MakeAssembly();
    SessionStep MakeStoreRequest();
    SessionStep MakeStep();

    std::mt19937 m_Random;
    int m_Files = 0;
};
