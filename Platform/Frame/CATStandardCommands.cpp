#include "CATStandardCommands.h"

#include <memory>
#include <utility>

#include "CATCSO.h"
#include "CATCommandHeaderRegister.h"
#include "CATFrmEditor.h"
#include "CATPathElement.h"
#include "CATPathElementPool.h"

namespace {

constexpr const char* HEADER_CLASS = "CATApplicationFrame";

HRESULT AddToSelection(const CATBaseUnknown_var& spObject, bool bEmptyFirst)
{
    CATFrmEditor* pEditor = CATFrmEditor::GetCurrentEditor();
    if (pEditor == nullptr || spObject == NULL_var) {
        return E_FAIL;
    }
    if (bEmptyFirst) {
        pEditor->GetCSO()->Empty();
    }
    if (!pEditor->GetCSO()->ContainsObject(spObject)) {
        CATPathElementPool& paths = pEditor->GetPathElements();
        CATPathElement_var spPath = CATPathElement_var::Adopt(paths.Find(spObject.Get()));
        if (spPath == NULL_var) {
            spPath = CATPathElement_var::Adopt(paths.Get(nullptr, spObject));
        }
        pEditor->GetCSO()->AddElement(spPath.Get());
    }
    return S_OK;
}

HRESULT ClearSelection(const CATBaseUnknown_var&)
{
    CATFrmEditor* pEditor = CATFrmEditor::GetCurrentEditor();
    if (pEditor == nullptr) {
        return E_FAIL;
    }
    pEditor->GetCSO()->Empty();
    return S_OK;
}

} // namespace

void CATStandardCommands::AddHeaders(CATCommandHeaderRegister& headers)
{
    const auto add = [&headers](const char* id, CATCommandHeader::Action action) {
        headers.Add(std::make_unique<CATCommandHeader>(id, HEADER_CLASS, std::move(action)));
    };
    add(SELECT, [](const CATBaseUnknown_var& spObject) { return AddToSelection(spObject, true); });
    add(ADD_TO_SELECTION, [](const CATBaseUnknown_var& spObject) { return AddToSelection(spObject, false); });
    add(CLEAR_SELECTION, ClearSelection);
}
