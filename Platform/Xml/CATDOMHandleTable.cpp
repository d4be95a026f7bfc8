#include "CATDOMHandleTable.h"

#include <algorithm>
#include <new>
#include <utility>

namespace {

constexpr std::size_t LEAST_SLOTS = 16;

} // namespace

std::size_t CATDOMHandleTable::HomeOf(const pugi::xml_node_struct* pNode) const
{
    // Nodes are 64 bytes: those of the same kilobyte, an object with its attributes for example, have their slots side
    // by side.
    const auto address = reinterpret_cast<std::uintptr_t>(pNode);
    const std::uint64_t line = static_cast<std::uint64_t>(address >> 10U) * 0x9E3779B97F4A7C15U;
    return static_cast<std::size_t>(((line >> 20U) << 4U) | ((address >> 6U) & 15U)) & (m_SlotCount - 1);
}

CATDOMElement* CATDOMHandleTable::Find(const pugi::xml_node_struct* pNode) const
{
    if (m_Count == 0) {
        return nullptr;
    }
    std::size_t slot = HomeOf(pNode);
    while (m_pSlots[slot].pNode != nullptr) {
        if (m_pSlots[slot].pNode == pNode) {
            return m_pSlots[slot].pElement;
        }
        slot = (slot + 1) & (m_SlotCount - 1);
    }
    return nullptr;
}

void CATDOMHandleTable::MakeRoom()
{
    if (2 * (m_Count + 1) > m_SlotCount) {
        const std::size_t slotCount = std::max(LEAST_SLOTS, 2 * m_SlotCount);
        Move(std::make_unique<Slot[]>(slotCount), slotCount);
    }
}

void CATDOMHandleTable::Insert(const pugi::xml_node_struct* pNode, CATDOMElement* pElement)
{
    MakeRoom();
    std::size_t slot = HomeOf(pNode);
    while (m_pSlots[slot].pNode != nullptr) {
        slot = (slot + 1) & (m_SlotCount - 1);
    }
    m_pSlots[slot] = Slot{pNode, pElement};
    ++m_Count;
}

void CATDOMHandleTable::Erase(const pugi::xml_node_struct* pNode)
{
    const std::size_t mask = m_SlotCount - 1;
    std::size_t gap = HomeOf(pNode);
    while (m_pSlots[gap].pNode != pNode) {
        gap = (gap + 1) & mask;
    }
    // Entries behind the gap that belong at or before it move up, so that no search ends too early.
    for (std::size_t slot = (gap + 1) & mask; m_pSlots[slot].pNode != nullptr; slot = (slot + 1) & mask) {
        const std::size_t home = HomeOf(m_pSlots[slot].pNode);
        if (((slot - home) & mask) >= ((slot - gap) & mask)) {
            m_pSlots[gap] = m_pSlots[slot];
            gap = slot;
        }
    }
    m_pSlots[gap] = Slot{};
    --m_Count;
    if (m_SlotCount > LEAST_SLOTS && 16 * m_Count < m_SlotCount) {
        // Without memory for a smaller one the table stays as large as it is: handles are dropped where nothing may
        // fail.
        const std::size_t slotCount = std::max(LEAST_SLOTS, m_SlotCount / 4);
        if (Slots pSlots(new (std::nothrow) Slot[slotCount]()); pSlots != nullptr) {
            Move(std::move(pSlots), slotCount);
        }
    }
}

void CATDOMHandleTable::Move(Slots pSlots, std::size_t slotCount)
{
    pSlots.swap(m_pSlots);
    const std::size_t oldCount = std::exchange(m_SlotCount, slotCount);
    m_Count = 0;
    for (std::size_t i = 0; i < oldCount; ++i) {
        if (pSlots[i].pNode != nullptr) {
            Insert(pSlots[i].pNode, pSlots[i].pElement);
        }
    }
}
