#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

namespace pugi {
struct xml_node_struct;
} // namespace pugi

class CATDOMElement;

// The handle object of each element that has one. Open addressing; elements that are neighbours in memory, which are
// neighbours in the document mostly, have neighbouring slots.
class CATDOMHandleTable
{
public:
    // Null when the element has no handle object.
    CATDOMElement* Find(const pugi::xml_node_struct* pNode) const;
    // Lets the next insertion take no memory.
    void MakeRoom();
    // The element must have none yet.
    void Insert(const pugi::xml_node_struct* pNode, CATDOMElement* pElement);
    // The element must have one.
    void Erase(const pugi::xml_node_struct* pNode);

private:
    struct Slot
    {
        const pugi::xml_node_struct* pNode;
        CATDOMElement* pElement;
    };

    using Slots = std::unique_ptr<Slot[]>;

    std::size_t HomeOf(const pugi::xml_node_struct* pNode) const;
    // Moves everything to other slots, which must be enough for it.
    void Move(Slots pSlots, std::size_t slotCount);

    Slots m_pSlots;
    std::size_t m_SlotCount = 0;
    std::size_t m_Count = 0;
};
