#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <utility>

#include "PlatformExport.h"

// Raises the error of a list index that lies outside the list. Kept out of line: lists are everywhere.
[[noreturn]] PLATFORM_API void CATThrowListIndexError(int index, int size);

struct CATCollec
{
    // What RemoveAll does with the memory of a list that it empties.
    enum MemoryHandling
    {
        ReleaseAllocation,
        KeepAllocation
    };
};

// List of values, indexed from 1 and implicitly shared: a copy is O(1), the first write detaches it. Adding and
// removing at either end takes constant time. An index outside the list raises an error.
// Reading is by const reference only, so that it never detaches; Replace writes an element.
template <class T>
class CATListVal
{
public:
    CATListVal() noexcept = default;
    explicit CATListVal(int initialCapacity) { Reserve(initialCapacity); }
    CATListVal(const CATListVal& other) noexcept : m_pBlock(other.m_pBlock)
    {
        if (m_pBlock != nullptr) {
            ++m_pBlock->references;
        }
    }
    CATListVal(CATListVal&& other) noexcept : m_pBlock(std::exchange(other.m_pBlock, nullptr)) {}
    ~CATListVal() { Block::Release(m_pBlock); }

    CATListVal& operator=(CATListVal other) noexcept
    {
        std::swap(m_pBlock, other.m_pBlock);
        return *this;
    }

    int Size() const { return m_pBlock != nullptr ? m_pBlock->size : 0; }

    const T& operator[](int position) const
    {
        CheckPosition(position, Size());
        return begin()[position - 1];
    }

    const T* begin() const { return m_pBlock != nullptr ? m_pBlock->First() : nullptr; }
    const T* end() const { return m_pBlock != nullptr ? m_pBlock->First() + m_pBlock->size : nullptr; }

    void Append(const T& value) { InsertAt(Size() + 1, value); }

    void Append(const CATListVal& other)
    {
        if (Size() == 0) {
            *this = other;
            return;
        }
        const CATListVal keepAlive(other);
        Reserve(Size() + keepAlive.Size());
        for (const T& value : keepAlive) {
            Append(value);
        }
    }

    // Inserts before the element at that position; Size() + 1 appends.
    void InsertAt(int position, const T& value)
    {
        CheckPosition(position, Size() + 1);
        T copy(value);
        const bool atFront = position == 1 && Size() > 0;
        MakeWritable(Size() + 1, atFront);
        T* pFirst = m_pBlock->First();
        if (atFront) {
            ::new (static_cast<void*>(pFirst - 1)) T(std::move(copy));
            --m_pBlock->begin;
        } else {
            T* pEnd = pFirst + m_pBlock->size;
            ::new (static_cast<void*>(pEnd)) T(std::move(copy));
            std::rotate(pFirst + (position - 1), pEnd, pEnd + 1);
        }
        ++m_pBlock->size;
    }

    void Replace(int position, const T& value)
    {
        CheckPosition(position, Size());
        T copy(value);
        MakeWritable(Size(), false);
        m_pBlock->First()[position - 1] = std::move(copy);
    }

    // Position of the first element that equals value at or behind fromPosition, 0 when there is none.
    int Locate(const T& value, int fromPosition = 1) const
    {
        for (int i = std::max(fromPosition, 1); i <= Size(); ++i) {
            if (begin()[i - 1] == value) {
                return i;
            }
        }
        return 0;
    }

    void RemovePosition(int position)
    {
        CheckPosition(position, Size());
        if (Size() == 1) {
            RemoveAll();
            return;
        }
        MakeWritable(Size(), false);
        T* pFirst = m_pBlock->First();
        T* pRemoved = pFirst + (position - 1);
        [[maybe_unused]] const T removed(std::move(*pRemoved));
        if (position <= m_pBlock->size / 2) {
            std::move_backward(pFirst, pRemoved, pRemoved + 1);
            std::destroy_at(pFirst);
            ++m_pBlock->begin;
        } else {
            std::move(pRemoved + 1, pFirst + m_pBlock->size, pRemoved);
            std::destroy_at(pFirst + m_pBlock->size - 1);
        }
        --m_pBlock->size;
    }

    // Removes the first element that equals value; its former position, 0 when there was none.
    int RemoveValue(const T& value)
    {
        const int position = Locate(value);
        if (position > 0) {
            RemovePosition(position);
        }
        return position;
    }

    void RemoveAll(CATCollec::MemoryHandling = CATCollec::ReleaseAllocation)
    {
        Block::Release(std::exchange(m_pBlock, nullptr));
    }

    // Makes room, so that appending up to that size does not allocate.
    void Reserve(int capacity)
    {
        if (capacity > Size()) {
            MakeWritable(capacity, false);
        }
    }

    friend bool operator==(const CATListVal& a, const CATListVal& b)
    {
        return a.m_pBlock == b.m_pBlock || std::equal(a.begin(), a.end(), b.begin(), b.end());
    }

private:
    struct Block
    {
        std::uint32_t references;
        int begin;
        int size;
        int capacity;

        T* Slots() { return reinterpret_cast<T*>(this + 1); }
        T* First() { return Slots() + begin; }

        static Block* Create(int capacity, int begin)
        {
            static_assert(alignof(T) <= alignof(std::max_align_t));
            // NOLINTNEXTLINE(bugprone-sizeof-expression): an element may be a pointer.
            void* pMemory = ::operator new(sizeof(Block) + static_cast<std::size_t>(capacity) * sizeof(T));
            return ::new (pMemory) Block{1, begin, 0, capacity};
        }

        static void Free(Block* pBlock) { ::operator delete(pBlock); }

        static void Release(Block* pBlock)
        {
            if (pBlock != nullptr && --pBlock->references == 0) {
                std::destroy_n(pBlock->First(), pBlock->size);
                Free(pBlock);
            }
        }
    };

    static void CheckPosition(int position, int last)
    {
        if (position < 1 || position > last) [[unlikely]] {
            CATThrowListIndexError(position, last);
        }
    }

    // Makes the block this list's own, with room for that many elements and, for a front insertion, a free slot in
    // front of the first.
    void MakeWritable(int neededSize, bool roomInFront)
    {
        if (m_pBlock != nullptr && m_pBlock->references == 1) {
            const bool fits = roomInFront ? m_pBlock->begin > 0 : m_pBlock->begin + neededSize <= m_pBlock->capacity;
            if (fits) {
                return;
            }
        }
        const int size = Size();
        const bool grows = neededSize > size && size > 0;
        const int slack = grows ? std::max(size, 2) : 0;
        // Room at the other end stays, so that a list that grows at both ends does not lose it each time.
        int front = roomInFront ? slack + 1 : 0;
        int back = roomInFront ? 0 : slack;
        if (grows && m_pBlock->references == 1) {
            front = std::max(front, std::min(m_pBlock->begin, size));
            back = std::max(back, std::min(m_pBlock->capacity - m_pBlock->begin - size, size));
        }
        // Copying an element may fail.
        std::unique_ptr<Block, decltype(&Block::Free)> pNew(
            Block::Create(front + std::max(neededSize, size) + back, front), &Block::Free);
        if (size > 0) {
            if (m_pBlock->references == 1) {
                std::uninitialized_move_n(m_pBlock->First(), size, pNew->First());
            } else {
                std::uninitialized_copy_n(m_pBlock->First(), size, pNew->First());
            }
        }
        pNew->size = size;
        Block::Release(std::exchange(m_pBlock, pNew.release()));
    }

    Block* m_pBlock = nullptr;
};
