#pragma once

#include <string>
#include <vector>

#include "QTBInvariants.h"

// One thing that happens in a random session. Most are lines of the shell; those that begin with a word of
// SessionPlayer are not, and a script shows them as comments.
struct SessionStep
{
    std::string line;
    // File that the line names, written in front of it; none where the name is empty.
    std::string fileName;
    std::string content;
    // What the answer in the content is allowed to do.
    QTBAnswers answers = QTBAnswers::MoveRelations;
};

using SessionSteps = std::vector<SessionStep>;
