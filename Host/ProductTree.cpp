#include "ProductTree.h"

#include <memory>

#include "CATDocument.h"
#include "CATError.h"
#include "CATProductServices.h"
#include "HostSession.h"
#include "QTBLimits.h"
#include "QTBMessageUtil.h"

namespace {

// A path of more steps than this is cut in the middle of its listing: it is shown, not followed.
constexpr std::size_t LONGEST_PATH = 4096;

std::string Extend(const std::string& path, const CATUnicodeString& name)
{
    if (path.size() > LONGEST_PATH) {
        return path;
    }
    return path.empty() ? std::string(name.View()) : path + "/" + std::string(name.View());
}

} // namespace

std::vector<ProductTree::Place> ProductTree::Collect(const CATListValCATBaseUnknown_var& documents)
{
    const int maxProducts = QTBLimits::GetMaxProducts();
    std::vector<Place> places;
    std::vector<Place> waiting;
    for (int i = documents.Size(); i >= 1; --i) {
        CATIProduct_var spIProductOnRoot;
        const CATDocument* pDocument = CATDocument::FromComponent(documents[i].Get());
        if (pDocument != nullptr && SUCCEEDED(CATProductServices::GetRootProduct(*pDocument, &spIProductOnRoot))) {
            waiting.push_back({spIProductOnRoot, 0, i == documents.Size(), -1, ""});
        }
    }
    while (!waiting.empty()) {
        if (places.size() == static_cast<std::size_t>(maxProducts)) {
            HostSession::Require(CATError::GetReturn(2, QTBMessageUtil::MaxProductsReachedError(maxProducts), nullptr,
                                                     __FILE__, __LINE__),
                                 ExitCode::Failure, "assembly");
        }
        places.push_back(std::move(waiting.back()));
        waiting.pop_back();
        const int position = static_cast<int>(places.size()) - 1;
        const Place& place = places.back();
        const std::unique_ptr<CATListValCATBaseUnknown_var> pChildren(place.spIProduct->GetChildren("CATIProduct"));
        for (int i = pChildren->Size(); i >= 1; --i) {
            const CATIProduct_var spIChild((*pChildren)[i]);
            CATUnicodeString usName;
            spIChild->GetPrdInstanceName(&usName);
            waiting.push_back(
                {spIChild, place.level + 1, i == pChildren->Size(), position, Extend(place.path, usName)});
        }
    }
    return places;
}

std::string ProductTree::GetLabel(const CATIProduct_var& spIProduct)
{
    CATUnicodeString usName;
    const CATUnicodeString usPartNumber = spIProduct->GetPartNumber();
    if (FAILED(spIProduct->GetPrdInstanceName(&usName))) {
        return std::string(usPartNumber.View());
    }
    return std::string(usName.View()) + (usPartNumber.IsEmpty() ? "" : " (" + std::string(usPartNumber.View()) + ")");
}
