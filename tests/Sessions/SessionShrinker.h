#pragma once

#include <functional>

#include "SessionStep.h"

// Leaves out of a session that fails what it can do without and still fail: larger pieces first, then single steps,
// then single lines of the files. fails is asked for each attempt.
SessionSteps ShrinkSession(SessionSteps steps, const std::function<bool(const SessionSteps&)>& fails);
