#include "CATClipboard.h"

#include <algorithm>
#include <memory>
#include <vector>

#include "CATCSO.h"
#include "CATICSOFilter.h"
#include "CATICutAndPastable.h"

// What distinguishes pasting a copy from pasting a link.
struct CATClipboardSide
{
    const char* commandName;
    CATListPtrCATFormat* (CATICutAndPastable::*listFormats)();
    CATListValCATBaseUnknown_var (CATICutAndPastable::*insert)(const CATListValCATBaseUnknown_var&, const CATFormat*);
};

namespace {

using Objects = std::vector<CATICutAndPastable_var>;
using ListFormats = CATListPtrCATFormat* (CATICutAndPastable::*)();
using Boundary = int (CATICutAndPastable::*)(CATListValCATBaseUnknown_var&, const CATFormat*);

// The paths' objects, without those that have left the model.
CATListValCATBaseUnknown_var GetSelectedObjects(CATCSO* pCSO)
{
    CATListValCATBaseUnknown_var objects;
    if (pCSO != nullptr) {
        for (const CATPathElement_var& spPath : pCSO->GetElements()) {
            if (spPath->GetObject()) {
                objects.Append(spPath->GetObject());
            }
        }
    }
    return objects;
}

// The objects that a command works on; empty when it may not run.
CATListValCATBaseUnknown_var GetObjects(const char* commandName, CATCSO* pCSO)
{
    CATListValCATBaseUnknown_var selected = GetSelectedObjects(pCSO);
    const CATICSOFilter_var spICSOFilter(selected.Size() > 0 ? selected[1] : CATBaseUnknown_var());
    if (spICSOFilter == NULL_var) {
        return selected;
    }
    CATListValCATBaseUnknown_var available;
    CATListValCATBaseUnknown_var* pAvailable = &available;
    if (spICSOFilter->CommandIsAvailable(commandName, pCSO) != S_OK ||
        FAILED(spICSOFilter->AvailableElements(commandName, pCSO, &pAvailable))) {
        available.RemoveAll();
    }
    return available;
}

// The objects as the clipboard deals with them; none when one of them does not deal with it.
Objects Convert(const CATListValCATBaseUnknown_var& objects)
{
    Objects converted;
    for (const CATBaseUnknown_var& spObject : objects) {
        converted.emplace_back(spObject);
        if (converted.back() == NULL_var) {
            return {};
        }
    }
    return converted;
}

CATListPtrCATFormat GetFormats(CATICutAndPastable& object, ListFormats listFormats)
{
    const std::unique_ptr<CATListPtrCATFormat> pFormats((object.*listFormats)());
    return pFormats != nullptr ? *pFormats : CATListPtrCATFormat();
}

// The best format that all of them have: a native one, else the first of the first object. Null for none.
const CATFormat* ChooseFormat(const Objects& objects, ListFormats listFormats)
{
    if (objects.empty()) {
        return nullptr;
    }
    CATListPtrCATFormat common = GetFormats(*objects.front(), listFormats);
    for (std::size_t i = 1; i < objects.size() && common.Size() > 0; ++i) {
        const CATListPtrCATFormat formats = GetFormats(*objects[i], listFormats);
        for (int j = common.Size(); j >= 1; --j) {
            if (formats.Locate(common[j]) == 0) {
                common.RemovePosition(j);
            }
        }
    }
    const auto native = std::find_if(common.begin(), common.end(), [](const CATFormat* p) { return p->IsNative(); });
    if (native != common.end()) {
        return *native;
    }
    return common.Size() > 0 ? common[1] : nullptr;
}

// Puts the further objects, which the first one names, to the objects. False when that fails.
bool AddBoundary(const CATFormat* pFormat, Boundary boundary, Objects& objects)
{
    CATListValCATBaseUnknown_var all;
    for (const CATICutAndPastable_var& spObject : objects) {
        all.Append(CATBaseUnknown_var(spObject));
    }
    if (((*objects.front()).*boundary)(all, pFormat) != 0) {
        return false;
    }
    objects = Convert(all);
    return !objects.empty();
}

// Objects and format of a command that takes objects away or up.
const CATFormat* Prepare(const char* commandName, CATCSO* pCSO, ListFormats listFormats, Boundary boundary,
                         Objects& objects)
{
    objects = Convert(GetObjects(commandName, pCSO));
    const CATFormat* pFormat = ChooseFormat(objects, listFormats);
    return pFormat != nullptr && AddBoundary(pFormat, boundary, objects) ? pFormat : nullptr;
}

HRESULT RemoveAll(const Objects& objects, const CATFormat* pFormat)
{
    bool bDone = true;
    for (const CATICutAndPastable_var& spObject : objects) {
        bDone = spObject->Remove(pFormat) == 0 && bDone;
    }
    return bDone ? S_OK : E_FAIL;
}

CATListValCATBaseUnknown_var ExtractAll(const Objects& objects, const CATFormat* pFormat)
{
    CATListValCATBaseUnknown_var content;
    for (const CATICutAndPastable_var& spObject : objects) {
        if (const CATBaseUnknown_var spExtracted = spObject->Extract(pFormat); spExtracted != NULL_var) {
            content.Append(spExtracted);
        }
    }
    return content;
}

} // namespace

CATClipboard* CATClipboard::GetClipboard()
{
    // Kept to the end of the program, as the frame is.
    static auto* const s_pClipboard = new CATClipboard();
    return s_pClipboard;
}

HRESULT CATClipboard::Copy(CATCSO* pCSO)
{
    Objects objects;
    const CATFormat* pFormat =
        Prepare("Copy", pCSO, &CATICutAndPastable::ListExtractFormats, &CATICutAndPastable::BoundaryExtract, objects);
    if (pFormat == nullptr) {
        return S_FALSE;
    }
    m_Content = ExtractAll(objects, pFormat);
    m_pFormat = pFormat;
    return S_OK;
}

HRESULT CATClipboard::Delete(CATCSO* pCSO)
{
    Objects objects;
    const CATFormat* pFormat =
        Prepare("Delete", pCSO, &CATICutAndPastable::ListRemoveFormats, &CATICutAndPastable::BoundaryRemove, objects);
    return pFormat != nullptr ? RemoveAll(objects, pFormat) : S_FALSE;
}

HRESULT CATClipboard::Cut(CATCSO* pCSO)
{
    Objects toExtract;
    Objects toRemove;
    const CATFormat* pExtractFormat =
        Prepare("Cut", pCSO, &CATICutAndPastable::ListExtractFormats, &CATICutAndPastable::BoundaryExtract, toExtract);
    const CATFormat* pRemoveFormat =
        Prepare("Cut", pCSO, &CATICutAndPastable::ListRemoveFormats, &CATICutAndPastable::BoundaryRemove, toRemove);
    if (pExtractFormat == nullptr || pRemoveFormat == nullptr) {
        return S_FALSE;
    }
    m_Content = ExtractAll(toExtract, pExtractFormat);
    m_pFormat = pExtractFormat;
    return RemoveAll(toRemove, pRemoveFormat);
}

HRESULT CATClipboard::Paste(CATCSO* pCSO, CATListValCATBaseUnknown_var* pNewObjects)
{
    static constexpr CATClipboardSide s_Side{"Paste", &CATICutAndPastable::ListPasteFormats,
                                             &CATICutAndPastable::Paste};
    return Insert(s_Side, pCSO, pNewObjects);
}

HRESULT CATClipboard::Link(CATCSO* pCSO, CATListValCATBaseUnknown_var* pNewObjects)
{
    static constexpr CATClipboardSide s_Side{"Link", &CATICutAndPastable::ListLinkFormats, &CATICutAndPastable::Link};
    return Insert(s_Side, pCSO, pNewObjects);
}

HRESULT CATClipboard::Insert(const CATClipboardSide& side, CATCSO* pCSO,
                             CATListValCATBaseUnknown_var* pNewObjects) const
{
    const Objects targets = Convert(GetObjects(side.commandName, pCSO));
    if (m_pFormat == nullptr || targets.empty()) {
        return S_FALSE;
    }
    CATICutAndPastable& target = *targets.front();
    const CATListPtrCATFormat formats = GetFormats(target, side.listFormats);
    if (std::find(formats.begin(), formats.end(), m_pFormat) == formats.end()) {
        return S_FALSE;
    }
    // The target may change what the clipboard holds.
    const CATListValCATBaseUnknown_var content = m_Content;
    const CATListValCATBaseUnknown_var newObjects = (target.*side.insert)(content, m_pFormat);
    if (pNewObjects != nullptr) {
        *pNewObjects = newObjects;
    }
    return S_OK;
}

void CATClipboard::Empty()
{
    m_pFormat = nullptr;
    m_Content.RemoveAll();
}
