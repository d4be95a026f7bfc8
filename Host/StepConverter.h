#pragma once

#include <string>
#include <vector>

struct CATPrdStructure;
struct CATStepAssembly;

// Turns an assembly into PDM answers and a product structure file, in the forms that docs/formats.md describes.
namespace StepConverter {

struct Answer
{
    // What the answer brings, for its file name: "structure" or "files".
    std::string name;
    std::string xml;
};

// Two answers, as a PDM system would send them for two requests: the structure (a Part for each product, a PartPart
// relation for each usage) and the files (a CATProductFile or CATPartFile for each product, a PartFile relation to it).
// Keys are made from product ids and versions and are unique. Only what the STEP file says is written; how an instance
// came by its name is told by the relation's attribute InstanceNameOrigin.
std::vector<Answer> ToAnswers(const CATStepAssembly& assembly);

// The assembly as a product structure file, so that it can be opened where no STEP reader is. directory is that of the
// documents in the structure.
std::string ToProducts(const CATPrdStructure& structure, const std::string& directory);

} // namespace StepConverter
