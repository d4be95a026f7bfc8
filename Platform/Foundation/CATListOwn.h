#pragma once

#include <memory>
#include <vector>

#include "CATListVal.h"

// List of records, indexed from 1: each element is held by pointer and owned by the list, adding copies the given
// record, copying the list copies every record. The address of a record stays the same while it is in the list.
// Elements are compared with the record's own operator==. Base of the value lists that libraries export by name.
template <class T>
class CATListOwn
{
public:
    CATListOwn() = default;
    explicit CATListOwn(int initialCapacity) { m_Records.reserve(static_cast<std::size_t>(initialCapacity)); }
    // The list grows as it needs to; the increment is accepted for callers that give one.
    CATListOwn(int initialCapacity, int) : CATListOwn(initialCapacity) {}
    CATListOwn(const CATListOwn& other) { Append(other); }
    CATListOwn(CATListOwn&&) noexcept = default;
    ~CATListOwn() = default;

    CATListOwn& operator=(const CATListOwn& other)
    {
        CATListOwn copy(other);
        m_Records.swap(copy.m_Records);
        return *this;
    }
    CATListOwn& operator=(CATListOwn&&) noexcept = default;

    int Size() const { return static_cast<int>(m_Records.size()); }

    T& operator[](int position) { return *m_Records[ToOffset(position)]; }
    const T& operator[](int position) const { return *m_Records[ToOffset(position)]; }

    void Append(const T& record) { m_Records.push_back(std::make_unique<T>(record)); }

    void Append(const CATListOwn& other)
    {
        const std::size_t count = other.m_Records.size();
        m_Records.reserve(m_Records.size() + count);
        for (std::size_t i = 0; i < count; ++i) {
            Append(*other.m_Records[i]);
        }
    }

    // Position of the first record that equals value at or behind fromPosition, 0 when there is none.
    int Locate(const T& value, int fromPosition = 1) const
    {
        for (int i = std::max(fromPosition, 1); i <= Size(); ++i) {
            if ((*this)[i] == value) {
                return i;
            }
        }
        return 0;
    }

    void RemovePosition(int position)
    {
        m_Records.erase(m_Records.begin() + static_cast<std::ptrdiff_t>(ToOffset(position)));
    }

    // Removes the first record that equals value; its former position, 0 when there was none.
    int RemoveValue(const T& value)
    {
        const int position = Locate(value);
        if (position > 0) {
            RemovePosition(position);
        }
        return position;
    }

    void RemoveAll(CATCollec::MemoryHandling handling = CATCollec::ReleaseAllocation)
    {
        m_Records.clear();
        if (handling == CATCollec::ReleaseAllocation) {
            m_Records.shrink_to_fit();
        }
    }

    friend bool operator==(const CATListOwn& a, const CATListOwn& b)
    {
        return std::equal(a.m_Records.begin(), a.m_Records.end(), b.m_Records.begin(), b.m_Records.end(),
                          [](const auto& left, const auto& right) { return *left == *right; });
    }

private:
    std::size_t ToOffset(int position) const
    {
        if (position < 1 || position > Size()) [[unlikely]] {
            CATThrowListIndexError(position, Size());
        }
        return static_cast<std::size_t>(position - 1);
    }

    std::vector<std::unique_ptr<T>> m_Records;
};
