#include "ProductBoxes.h"

#include <array>
#include <charconv>
#include <cmath>
#include <optional>

#include <fmt/format.h>

#include "BoxView.h"
#include "CATApplicationFrame.h"
#include "CATCommandHeaderRegister.h"
#include "CATDocument.h"
#include "CATFrmEditor.h"
#include "CATFrmLayout.h"
#include "CATIPrdProperties.h"
#include "CATInstantiateComponent.h"
#include "CATMathPoint.h"
#include "CATMathVector.h"
#include "CATPrdStructure.h"
#include "CATVisuScene.h"
#include "HostSession.h"
#include "ProductTree.h"

namespace {

// Where a product stands: its axes and its origin.
struct Placement
{
    std::array<double, 12> numbers = {1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0};

    CATMathVector Turn(const CATMathVector& v) const
    {
        const auto coordinate = [&](std::size_t i) {
            return numbers[i] * v.GetX() + numbers[3 + i] * v.GetY() + numbers[6 + i] * v.GetZ();
        };
        return {coordinate(0), coordinate(1), coordinate(2)};
    }
    CATMathPoint Move(const CATMathPoint& p) const
    {
        return CATMathPoint(numbers[9], numbers[10], numbers[11]) + Turn(CATMathVector(p.GetX(), p.GetY(), p.GetZ()));
    }
    // The placement of what stands there in a product that stands here.
    Placement Place(const Placement& inner) const
    {
        Placement result;
        const std::array<double, 12>& n = inner.numbers;
        for (std::size_t column = 0; column < 3; ++column) {
            const CATMathVector axis = Turn({n[3 * column], n[3 * column + 1], n[3 * column + 2]});
            result.numbers[3 * column] = axis.GetX();
            result.numbers[3 * column + 1] = axis.GetY();
            result.numbers[3 * column + 2] = axis.GetZ();
        }
        const CATMathPoint origin = Move({n[9], n[10], n[11]});
        result.numbers[9] = origin.GetX();
        result.numbers[10] = origin.GetY();
        result.numbers[11] = origin.GetZ();
        return result;
    }
};

template <std::size_t COUNT>
std::optional<std::array<double, COUNT>> ReadNumbers(const CATBaseUnknown_var& spProduct, const char* property,
                                                     const std::string& place)
{
    const CATIPrdProperties_var spIPrdProperties(spProduct);
    CATUnicodeString usText;
    if (spIPrdProperties == NULL_var || FAILED(spIPrdProperties->GetUserProperty(property, &usText))) {
        return std::nullopt;
    }
    std::array<double, COUNT> numbers{};
    const std::string_view text = usText.View();
    const char* next = text.data();
    const char* const end = text.data() + text.size();
    bool isGood = true;
    for (double& number : numbers) {
        while (next != end && *next == ' ') {
            ++next;
        }
        const auto [stop, error] = std::from_chars(next, end, number);
        isGood = isGood && error == std::errc() && std::isfinite(number);
        next = stop;
    }
    if (!isGood || text.find_first_not_of(' ', static_cast<std::size_t>(next - text.data())) != text.npos) {
        throw HostError(ExitCode::BadInput, fmt::format("{}: the property {} is \"{}\"; expected were {} numbers",
                                                        place.empty() ? "/" : place, property, text, COUNT));
    }
    return numbers;
}

QTBIBndBox_var MakeBox(const std::array<double, 6>& bounds, const Placement& placement, const std::string& name)
{
    void* pCreated = nullptr;
    HostSession::Require(::CATInstantiateComponent("QTBBndBox", IID_QTBIBndBox, &pCreated), ExitCode::Failure,
                         "bounding box");
    QTBIBndBox_var spIBndBox = QTBIBndBox_var::Adopt(static_cast<QTBIBndBox*>(pCreated));
    spIBndBox->SetCorner(placement.Move({bounds[0], bounds[1], bounds[2]}));
    spIBndBox->SetFirstEdge(placement.Turn({bounds[3] - bounds[0], 0, 0}));
    spIBndBox->SetSecondEdge(placement.Turn({0, bounds[4] - bounds[1], 0}));
    spIBndBox->SetThirdEdge(placement.Turn({0, 0, bounds[5] - bounds[2]}));
    spIBndBox->SetName(CATUnicodeString(std::string_view(name)));
    return spIBndBox;
}

CATVisuScene* FindScene(const CATBaseUnknown_var& spDocument)
{
    const CATDocument* pDocument = CATDocument::FromComponent(spDocument.Get());
    for (CATFrmWindow* pWindow : CATFrmLayout::GetCurrentLayout()->GetWindowList()) {
        if (pDocument != nullptr && pWindow->GetEditor() != nullptr &&
            pWindow->GetEditor()->GetDocument() == pDocument) {
            return pWindow->GetScene();
        }
    }
    return nullptr;
}

std::vector<CATVisuItem> DisplayAll()
{
    std::vector<CATVisuItem> items;
    for (CATFrmWindow* pWindow : CATFrmLayout::GetCurrentLayout()->GetWindowList()) {
        if (CATVisuScene* pScene = pWindow->GetScene(); pScene != nullptr) {
            for (CATVisuItem& item : pScene->Display()) {
                items.push_back(std::move(item));
            }
        }
    }
    return items;
}

std::string ToText(const CATMathPoint& point)
{
    const auto round = [](double coordinate) { return std::round(coordinate * 1e3) / 1e3 + 0.0; };
    return fmt::format("({}, {}, {})", round(point.GetX()), round(point.GetY()), round(point.GetZ()));
}

} // namespace

void ProductBoxes::Show(const CATListValCATBaseUnknown_var& documents)
{
    for (const CATBaseUnknown_var& spDocument : documents) {
        CATVisuScene* pScene = FindScene(spDocument);
        if (pScene == nullptr || pScene->GetSize() > 0) {
            continue;
        }
        CATListValCATBaseUnknown_var document;
        document.Append(spDocument);
        // Fathers stand in front of their children.
        const std::vector<ProductTree::Place> places = ProductTree::Collect(document);
        std::vector<Placement> placements;
        placements.reserve(places.size());
        for (const ProductTree::Place& place : places) {
            Placement placement = place.father >= 0 ? placements[static_cast<std::size_t>(place.father)] : Placement();
            if (const auto inner = ReadNumbers<12>(place.spIProduct, CAT_PRD_PLACEMENT, place.path);
                inner && place.father >= 0) {
                placement = placement.Place(Placement{*inner});
            }
            placements.push_back(placement);
            const CATIProduct_var spIReference = place.spIProduct->GetReferenceProduct();
            if (const auto bounds = ReadNumbers<6>(spIReference, CAT_PRD_BOUNDING_BOX, place.path)) {
                pScene->Add(MakeBox(*bounds, placement, place.path.empty() ? "/" : place.path));
            }
        }
    }
}

std::vector<ProductBoxes::Shown> ProductBoxes::Collect()
{
    std::vector<Shown> boxes;
    for (const CATVisuItem& item : DisplayAll()) {
        if (const QTBIBndBox_var spIBndBox(item.spObject); spIBndBox != NULL_var) {
            boxes.push_back({spIBndBox, std::string(spIBndBox->GetName().View()), spIBndBox->IsMarked() != FALSE});
        }
    }
    return boxes;
}

void ProductBoxes::SetMarked(const QTBIBndBox_var& spIBndBox, bool isMarked)
{
    const CATCommandHeaderRegister& headers = CATApplicationFrame::GetFrame()->GetCommandHeaders();
    HostSession::Require(
        headers.StartCommand(isMarked ? "QTBPdmWksCtxMarkBndBoxCmdHdr" : "QTBPdmWksCtxUnMarkBndBoxCmdHdr", spIBndBox),
        ExitCode::Failure, std::string(spIBndBox->GetName().View()));
}

std::string ProductBoxes::Describe(const std::vector<Shown>& boxes)
{
    std::string text;
    int number = 0;
    for (const Shown& box : boxes) {
        CATMathPoint corner;
        CATMathVector edges[3];
        box.spIBndBox->GetCorner(corner);
        box.spIBndBox->GetFirstEdge(edges[0]);
        box.spIBndBox->GetSecondEdge(edges[1]);
        box.spIBndBox->GetThirdEdge(edges[2]);
        text +=
            fmt::format("[{}] {} - {}  {}{}\n", ++number, ToText(corner),
                        ToText(corner + edges[0] + edges[1] + edges[2]), box.name, box.isMarked ? "  <== marked" : "");
    }
    return text;
}

void ProductBoxes::WritePicture(const std::string& path, int size)
{
    BoxView view(size);
    for (const CATVisuItem& item : DisplayAll()) {
        view.Add(item);
    }
    view.Draw().WritePng(path);
}
