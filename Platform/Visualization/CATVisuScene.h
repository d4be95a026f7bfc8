#pragma once

#include <list>
#include <memory>
#include <unordered_map>
#include <vector>

#include "CATModelEventListener.h"
#include "CATRep.h"
#include "CATVisuItem.h"
#include "PlatformExport.h"

class CATPathElementPool;

// What a 3D view shows: objects in the order in which they were added. Each is asked for its representation
// (CATI3DGeoVisu) when it is displayed for the first time and again after its event Modified (CATIModelEvents); the
// event Deleted takes it out, and out of the paths that lead to it.
class PLATFORM_API CATVisuScene : public CATModelEventListener
{
public:
    // The paths of the editor to which the view belongs; null for none.
    explicit CATVisuScene(std::shared_ptr<CATPathElementPool> pPathElements = nullptr);
    CATVisuScene(const CATVisuScene&) = delete;
    CATVisuScene& operator=(const CATVisuScene&) = delete;
    ~CATVisuScene() override;

    // False for an empty handle and for an object that is in the scene already.
    bool Add(const CATBaseUnknown_var& spObject);
    // False when the object is not in the scene.
    bool Remove(const CATBaseUnknown_var& spObject);
    int GetSize() const { return static_cast<int>(m_Entries.size()); }

    // Has the object asked for its representation again when it is displayed next.
    void Redraw(const CATBaseUnknown_var& spObject);

    // Tells the object that it is selected, or not any more (CATISelectShow). False for an object that is not in the
    // scene or is as it is told.
    bool Select(const CATBaseUnknown_var& spObject, bool bSelected);

    // Displays the scene: the objects that are to be seen. What the items point to is good until the scene changes.
    std::vector<CATVisuItem> Display();

    void OnModelEvent(const CATBaseUnknown_var& spObject, CATModelEvent event) override;

private:
    struct Entry
    {
        CATBaseUnknown_var spObject;
        std::unique_ptr<CATRep> pRep;
        std::unique_ptr<CATRep> pSelectionRep;
        bool bKnown = false;
        bool bSelected = false;
    };

    // Null for an object that is not in the scene.
    Entry* Find(const CATBaseUnknown_var& spObject);
    void Disconnect(const CATBaseUnknown_var& spObject);

    std::shared_ptr<CATPathElementPool> m_pPathElements;
    std::list<Entry> m_Entries;
    std::unordered_map<const CATBaseUnknown*, std::list<Entry>::iterator> m_Places;
};
