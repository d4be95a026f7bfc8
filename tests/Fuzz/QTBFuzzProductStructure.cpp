// A product structure file, opened beside a PDM graph that has parts of the same numbers, walked, compared and closed.

#include <memory>

#include "CATDocument.h"
#include "CATIProduct.h"
#include "CATProductServices.h"
#include "QTBConstants.h"
#include "QTBFuzzSession.h"
#include "QTBILinkToQtb.h"
#include "QTBIPsnNode.h"

namespace {

constexpr const char* ANSWER = R"(<answer><function name="f">
<o><a name="Class">Part</a><a name="Key">A</a><a name="PartNumber">A</a></o>
<o><a name="Class">Part</a><a name="Key">B</a><a name="PartNumber">B</a></o>
<r><a name="Class">PartPart</a><a name="Key">AB</a><a name="Relation">PartPart</a><a name="Left">A</a><a name="Right">B</a><a name="InstanceName">B.1</a></r>
</function></answer>)";

void LookAtProduct(const CATIProduct_var& spIProduct)
{
    const QTBIPsnNode_var spIPsnNode(spIProduct);
    CATUnicodeString usText;
    spIPsnNode->GetPsnNodeType(&usText, nullptr);
    spIPsnNode->GetPdmNodeType(&usText, nullptr, nullptr);
    CATListValCATBaseUnknown_var children;
    spIPsnNode->GetAllChildren(&children, TRUE, TRUE, QTB_BOM_TYPE_ALL, FALSE, FALSE);
    CATListValCATUnicodeString added;
    CATListValCATUnicodeString missing;
    spIPsnNode->CheckCurrentChildInstanceInfoLists(&added, &missing, FALSE);
    CATFrmWindow* pWindow = nullptr;
    QTBILinkToQtb_var(spIProduct)->HighlightProdStrucNode(TRUE, TRUE, &pWindow);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QTBFuzzSession session;
    const QTBIRepNodeCont_var spIRepNodeCont = QTBFuzzSession::OpenWindow();
    QTBFuzzSession::ReadAnswer(ANSWER);
    QTBFuzzSession::ExpandAll(spIRepNodeCont, true);
    const std::string path = QTBFuzzSession::WriteFile("products.xml", QTBFuzzSession::ToText(data, size));
    CATListValCATBaseUnknown_var documents;
    if (FAILED(CATProductServices::OpenFile(path.c_str(), &documents))) {
        return 0;
    }
    std::vector<CATIProduct_var> waiting;
    for (const CATBaseUnknown_var& spDocument : documents) {
        CATIProduct_var spIProduct;
        if (SUCCEEDED(CATProductServices::GetRootProduct(*CATDocument::FromComponent(spDocument.Get()), &spIProduct))) {
            waiting.push_back(spIProduct);
        }
    }
    constexpr int ENOUGH = 20;
    for (int looked = 0; !waiting.empty() && looked < ENOUGH; ++looked) {
        const CATIProduct_var spIProduct = waiting.back();
        waiting.pop_back();
        LookAtProduct(spIProduct);
        const std::unique_ptr<CATListValCATBaseUnknown_var> pChildren(spIProduct->GetChildren("CATIProduct"));
        waiting.insert(waiting.end(), pChildren->begin(), pChildren->end());
    }
    QTBFuzzSession::LookAtEverything(spIRepNodeCont);
    QTBFuzzSession::CheckInvariants();
    // The same file again, while its documents are open.
    CATProductServices::OpenFile(path.c_str(), nullptr);
    return 0;
}
