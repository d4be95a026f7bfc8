#include "CATVisuScene.h"

#include <utility>

#include "CATExtIVisProperties.h"
#include "CATI3DGeoVisu.h"
#include "CATIModelEvents.h"
#include "CATISelectShow.h"
#include "CATIVisProperties.h"
#include "CATPathElementPool.h"

CATVisuScene::CATVisuScene(std::shared_ptr<CATPathElementPool> pPathElements)
    : m_pPathElements(std::move(pPathElements))
{
}

CATVisuScene::~CATVisuScene()
{
    for (const Entry& entry : m_Entries) {
        Disconnect(entry.spObject);
    }
}

bool CATVisuScene::Add(const CATBaseUnknown_var& spObject)
{
    if (!spObject || Find(spObject) != nullptr) {
        return false;
    }
    m_Entries.emplace_back().spObject = spObject;
    m_Places.emplace(spObject.Get(), std::prev(m_Entries.end()));
    if (const CATIModelEvents_var spIModelEvents(spObject); spIModelEvents != NULL_var) {
        spIModelEvents->Connect(this);
    }
    return true;
}

bool CATVisuScene::Remove(const CATBaseUnknown_var& spObject)
{
    Select(spObject, false);
    const auto found = m_Places.find(spObject.Get());
    if (found == m_Places.end()) {
        return false;
    }
    // The object goes when the scene is done with it: its end may reach the scene.
    std::list<Entry> removed;
    removed.splice(removed.end(), m_Entries, found->second);
    m_Places.erase(found);
    Disconnect(removed.front().spObject);
    return true;
}

void CATVisuScene::Redraw(const CATBaseUnknown_var& spObject)
{
    if (Entry* pEntry = Find(spObject); pEntry != nullptr) {
        pEntry->bKnown = false;
    }
}

bool CATVisuScene::Select(const CATBaseUnknown_var& spObject, bool bSelected)
{
    Entry* pEntry = Find(spObject);
    if (pEntry == nullptr || pEntry->bSelected == bSelected) {
        return false;
    }
    pEntry->bSelected = bSelected;
    const CATISelectShow_var spISelectShow(spObject);
    if (spISelectShow != NULL_var) {
        bSelected ? spISelectShow->BeginShow() : spISelectShow->EndShow();
        std::unique_ptr<CATRep> pSelectionRep(bSelected ? spISelectShow->BuildSelectionRep() : nullptr);
        // The object may have left the scene meanwhile.
        if (Entry* pStillThere = Find(spObject); pStillThere != nullptr) {
            pStillThere->pSelectionRep = std::move(pSelectionRep);
        }
    }
    return true;
}

std::vector<CATVisuItem> CATVisuScene::Display()
{
    std::vector<CATVisuItem> items;
    for (Entry& entry : m_Entries) {
        if (!std::exchange(entry.bKnown, true)) {
            const CATI3DGeoVisu_var spI3DGeoVisu(entry.spObject);
            entry.pRep.reset(spI3DGeoVisu != NULL_var ? spI3DGeoVisu->BuildRep() : nullptr);
        }
        const CATIVisProperties_var spIVisProperties(entry.spObject);
        const bool bHidden = spIVisProperties != NULL_var && spIVisProperties->IsVisible() == FALSE;
        if (entry.pRep == nullptr || bHidden) {
            continue;
        }
        CATVisuItem item{entry.spObject, entry.pRep.get(), entry.pSelectionRep.get(), entry.pRep->GetColor(),
                         CATExtIVisProperties::MAX_OPACITY};
        if (spIVisProperties != NULL_var) {
            // Without a colour of the user that of the representation stays.
            spIVisProperties->GetColor(&item.color);
            item.opacity = spIVisProperties->GetOpacity();
        }
        items.push_back(std::move(item));
    }
    return items;
}

void CATVisuScene::OnModelEvent(const CATBaseUnknown_var& spObject, CATModelEvent event)
{
    switch (event) {
    case CATModelEvent::Modified:
        Redraw(spObject);
        break;
    case CATModelEvent::VisPropertiesChanged:
        // Asked for anew with each display.
        break;
    case CATModelEvent::Deleted:
        Remove(spObject);
        if (m_pPathElements != nullptr) {
            m_pPathElements->LoseObject(spObject.Get());
        }
        break;
    }
}

CATVisuScene::Entry* CATVisuScene::Find(const CATBaseUnknown_var& spObject)
{
    const auto found = m_Places.find(spObject.Get());
    return found != m_Places.end() ? &*found->second : nullptr;
}

void CATVisuScene::Disconnect(const CATBaseUnknown_var& spObject)
{
    if (const CATIModelEvents_var spIModelEvents(spObject); spIModelEvents != NULL_var) {
        spIModelEvents->Disconnect(this);
    }
}
