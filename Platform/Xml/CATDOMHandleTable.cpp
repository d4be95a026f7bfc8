#include "CATDOMHandleTable.h"

#include <algorithm>
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
    return static_cast<std::size_t>(((line >> 20U) << 4U) | ((address >> 6U) & 15U)) & (m_Slots.size() - 1);
}

CATDOMElement* CATDOMHandleTable::Find(const pugi::xml_node_struct* pNode) const
{
    if (m_Count == 0) {
        return nullptr;
    }
    std::size_t slot = HomeOf(pNode);
    while (m_Slots[slot].pNode != nullptr) {
        if (m_Slots[slot].pNode == pNode) {
            return m_Slots[slot].pElement;
        }
        slot = (slot + 1) & (m_Slots.size() - 1);
    }
    return nullptr;
}

void CATDOMHandleTable::Insert(const pugi::xml_node_struct* pNode, CATDOMElement* pElement)
{
    if (2 * (m_Count + 1) > m_Slots.size()) {
        Resize(std::max(LEAST_SLOTS, 2 * m_Slots.size()));
    }
    std::size_t slot = HomeOf(pNode);
    while (m_Slots[slot].pNode != nullptr) {
        slot = (slot + 1) & (m_Slots.size() - 1);
    }
    m_Slots[slot] = Slot{pNode, pElement};
    ++m_Count;
}

void CATDOMHandleTable::Erase(const pugi::xml_node_struct* pNode)
{
    const std::size_t mask = m_Slots.size() - 1;
    std::size_t gap = HomeOf(pNode);
    while (m_Slots[gap].pNode != pNode) {
        gap = (gap + 1) & mask;
    }
    // Entries behind the gap that belong at or before it move up, so that no search ends too early.
    for (std::size_t slot = (gap + 1) & mask; m_Slots[slot].pNode != nullptr; slot = (slot + 1) & mask) {
        const std::size_t home = HomeOf(m_Slots[slot].pNode);
        if (((slot - home) & mask) >= ((slot - gap) & mask)) {
            m_Slots[gap] = m_Slots[slot];
            gap = slot;
        }
    }
    m_Slots[gap] = Slot{};
    --m_Count;
    if (m_Slots.size() > LEAST_SLOTS && 16 * m_Count < m_Slots.size()) {
        Resize(m_Slots.size() / 4);
    }
}

void CATDOMHandleTable::Resize(std::size_t slotCount)
{
    const std::vector<Slot> old = std::exchange(m_Slots, std::vector<Slot>(std::max(LEAST_SLOTS, slotCount)));
    m_Count = 0;
    for (const Slot& slot : old) {
        if (slot.pNode != nullptr) {
            Insert(slot.pNode, slot.pElement);
        }
    }
}
