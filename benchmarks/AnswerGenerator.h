#pragma once

#include <string>

// PDM answers of any size for the benchmarks: every object and relation has ten string attributes and a "QtbInfo" of
// ten entries, about 780 bytes of XML.
namespace AnswerGenerator {

std::string Key(int object);
std::string PartNumber(int object);
// Name under which an object hangs below its parent.
std::string InstanceName(int object);

// objectCount parts and, for each but the first, the relation to its parent: a tree with childCount children a node.
std::string Tree(int objectCount, int childCount);

} // namespace AnswerGenerator
