#include "BoxesCommand.h"

#include <algorithm>
#include <iostream>

#include <fmt/format.h>

#include "HostSession.h"
#include "ProductBoxes.h"

int RunBoxes(const BoxesOptions& options)
{
    HostSession session(options.schema, options.language);
    ProductBoxes::Show(session.OpenAssembly(options.assembly, true));
    std::vector<ProductBoxes::Shown> boxes = ProductBoxes::Collect();
    if (boxes.empty()) {
        throw HostError(ExitCode::BadInput, options.assembly + " has no boxes: none of its products has the property "
                                                               "BoundingBox (docs/formats.md)");
    }
    for (const std::string& path : options.marks) {
        const auto isThere = [&path](const ProductBoxes::Shown& box) {
            return box.name == path || box.name.starts_with(path + "/");
        };
        if (std::none_of(boxes.begin(), boxes.end(), isThere)) {
            throw HostError(ExitCode::Usage, fmt::format("--mark {}: the assembly has no box there", path));
        }
        for (const ProductBoxes::Shown& box : boxes) {
            if (isThere(box)) {
                ProductBoxes::SetMarked(box.spIBndBox, true);
            }
        }
    }
    boxes = ProductBoxes::Collect();
    std::cout << ProductBoxes::Describe(boxes);
    if (!options.png.empty()) {
        ProductBoxes::WritePicture(options.png, options.size);
    }
    return static_cast<int>(ExitCode::Success);
}
