#pragma once

#include <array>
#include <optional>

#include <StepBasic_ProductDefinition.hxx>
#include <StepRepr_NextAssemblyUsageOccurrence.hxx>
#include <Transfer_TransientProcess.hxx>

class STEPControl_Reader;

// The shapes of a STEP file that was read: boxes and placements are all that is asked of them. A file whose shapes
// cannot be made, as a whole or in part, just has fewer boxes.
class CATStepShapes
{
public:
    explicit CATStepShapes(STEPControl_Reader& reader);

    // As CATStepProduct and CATStepUsage have them.
    std::optional<std::array<double, 6>> FindBox(const Handle(StepBasic_ProductDefinition) & definition) const;
    std::optional<std::array<double, 12>> FindPlacement(const Handle(StepRepr_NextAssemblyUsageOccurrence) &
                                                        usage) const;

private:
    Handle(Transfer_TransientProcess) m_Process;
};
