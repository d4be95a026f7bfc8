#include "CATStepShapes.h"

#include <BRepBndLib.hxx>
#include <Bnd_Box.hxx>
#include <STEPControl_Reader.hxx>
#include <Standard_Failure.hxx>
#include <TopoDS_Shape.hxx>
#include <TransferBRep.hxx>
#include <XSControl_TransferReader.hxx>
#include <XSControl_WorkSession.hxx>
#include <gp_Trsf.hxx>

CATStepShapes::CATStepShapes(STEPControl_Reader& reader)
{
    try {
        reader.TransferRoots();
    } catch (const Standard_Failure&) {
        // What was transferred before is there.
    }
    if (const Handle(XSControl_TransferReader) transferReader = reader.WS()->TransferReader();
        !transferReader.IsNull()) {
        m_Process = transferReader->TransientProcess();
    }
}

std::optional<std::array<double, 6>> CATStepShapes::FindBox(const Handle(StepBasic_ProductDefinition) &
                                                            definition) const
{
    if (m_Process.IsNull()) {
        return std::nullopt;
    }
    try {
        const TopoDS_Shape shape = TransferBRep::ShapeResult(m_Process, definition);
        Bnd_Box box;
        if (!shape.IsNull()) {
            // Of the geometry itself: neither tolerances nor control points widen it.
            BRepBndLib::AddOptimal(shape, box, Standard_False, Standard_False);
        }
        if (box.IsVoid() || box.IsOpen()) {
            return std::nullopt;
        }
        std::array<double, 6> bounds{};
        box.Get(bounds[0], bounds[1], bounds[2], bounds[3], bounds[4], bounds[5]);
        return bounds;
    } catch (const Standard_Failure&) {
        return std::nullopt;
    }
}

std::optional<std::array<double, 12>> CATStepShapes::FindPlacement(const Handle(StepRepr_NextAssemblyUsageOccurrence) &
                                                                   usage) const
{
    if (m_Process.IsNull()) {
        return std::nullopt;
    }
    try {
        const TopoDS_Shape shape = TransferBRep::ShapeResult(m_Process, usage);
        if (shape.IsNull()) {
            return std::nullopt;
        }
        const gp_Trsf transformation = shape.Location().Transformation();
        std::array<double, 12> placement{};
        for (int column = 1; column <= 4; ++column) {
            for (int row = 1; row <= 3; ++row) {
                placement[static_cast<std::size_t>(3 * (column - 1) + row - 1)] = transformation.Value(row, column);
            }
        }
        return placement;
    } catch (const Standard_Failure&) {
        return std::nullopt;
    }
}
