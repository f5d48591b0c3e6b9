// The program's one container: a list that owns heap elements, in the order of their insertion,
// with one cursor built in. A class that is a list marks its current element by the cursor, so
// First and Next are for whoever means to move that mark; all others walk with
//
//     for (const Metric& metric : list)
//
// Indices count from 0.
#pragma once

#include "foundation/LibString.h"

#include <SupportDefs.h>

#include <cstdlib>
#include <iterator>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

// One link of a LinkList. The list deletes node and element; the node itself owns nothing.
template <class T>
class ListNode {
public:
    explicit ListNode(T* element) : item(element) { }
    virtual ~ListNode() = default;

    ListNode* prev = nullptr; // null at the head
    T* item;
    ListNode* next = nullptr; // null at the tail
};

template <class T>
class LinkList {
public:
    LinkList() = default;
    LinkList(const LinkList&) = delete; // elements are copied by assignment only
    virtual ~LinkList() { LinkList::Clear(); } // deletes all elements
    // Deletes all elements, then copies those of other, whose cursor is past its end afterwards.
    // Nothing happens to a list assigned to itself.
    LinkList& operator=(LinkList& other);

    // Deletes all elements.
    virtual void Clear();
    // The number of elements.
    virtual int32 Size() const { return count; }
    // True if a orders after b. For subclasses that sort; insertion never does.
    virtual bool SortCompare(T* a, T* b);

    // Appends item, which the list owns from then on; the cursor stays. False, and item still the
    // caller's, if there is no memory.
    bool Insert(T* item);
    // Appends item and returns it; null, and item deleted, if there is no memory.
    T* Insert(std::unique_ptr<T> item) { return Insert(item.get()) ? item.release() : nullptr; }
    // Appends a copy of every element of other, whose cursor is past its end afterwards.
    void Insert(LinkList& other);
    // Puts item in front of the element at index and the cursor on it; at index 0 of an empty list
    // it appends. False, and item still the caller's, if there is no such index or no memory.
    bool InsertBefore(T* item, const long& index);

    // Walk over the elements and leave the cursor alone. The element that an iterator is on may
    // not be removed.
    auto begin() { return Iterator<T> { head }; }
    auto end() { return Iterator<T> {}; }
    auto begin() const { return Iterator<const T> { head }; }
    auto end() const { return Iterator<const T> {}; }

    // Puts the cursor on the first element and returns that, null if the list is empty.
    T* First();
    // Puts the cursor on the following element and returns that; null at the end and after it.
    T* Next();
    // The element under the cursor, null if there is none.
    T* Current() const { return cursor ? cursor->item : nullptr; }
    // Puts the cursor on the element at index; false, and the cursor where it was, if there is
    // none.
    bool Position(const long& index);
    // The same, returning the element, or null. A literal zero must be written 0L.
    T* Get(const long& index) { return Position(index) ? cursor->item : nullptr; }

    // Puts the cursor on the first element equal to probe and returns that; null, and no cursor, if
    // there is none. Texts are compared case-sensitively, other elements by their operator==.
    T* Get(const T* probe) { return Search(*probe); }
    // The same, returning whether there is one.
    bool InList(T* probe) { return Search(*probe) != nullptr; }

    // Deletes the element under the cursor; false if there is none. The cursor goes back one
    // element, so that Next gives the one that followed. After the first element was deleted it is
    // on the new first one, which Next would skip: restart with First.
    bool Remove();
    // Deletes the first element equal to probe, or all of them. True if there was one.
    bool Remove(T* probe, bool all);

protected:
    ListNode<T>* head = nullptr;
    ListNode<T>* tail = nullptr;
    ListNode<T>* cursor = nullptr;
    int32 count = 0;
    int32 cursorIndex = -1; // -1 also after a search that found nothing
    int32 spare = -1;

private:
    template <class Item>
    struct Iterator {
        using iterator_category = std::forward_iterator_tag;
        using value_type = T;
        using difference_type = std::ptrdiff_t;
        using pointer = Item*;
        using reference = Item&;

        Item& operator*() const { return *node->item; }
        Item* operator->() const { return node->item; }
        Iterator& operator++()
        {
            node = node->next;
            return *this;
        }
        Iterator operator++(int) { return Iterator { std::exchange(node, node->next) }; }
        bool operator==(const Iterator&) const = default;

        ListNode<T>* node = nullptr;
    };

    static bool IsEqual(const T& a, const T& b);
    T* Search(const T& probe);
    void WalkForward(ListNode<T>* from, long steps);
    void WalkBackward(ListNode<T>* from, long steps);
};

template <class T>
LinkList<T>& LinkList<T>::operator=(LinkList& other)
{
    if (this != &other) {
        Clear();
        Insert(other);
    }
    return *this;
}

template <class T>
void LinkList<T>::Clear()
{
    First();
    while (Remove()) { }
}

template <class T>
bool LinkList<T>::SortCompare(T* a, T* b)
{
    // Two LibStrings under ">" would compare their addresses.
    if constexpr (std::is_base_of_v<LibString, T>)
        return a->Compare(*b, false) > 0;
    else
        return *a > *b;
}

template <class T>
bool LinkList<T>::Insert(T* item)
{
    auto* node = new (std::nothrow) ListNode<T>(item);
    if (!node)
        return false;
    node->prev = tail;
    (tail ? tail->next : head) = node;
    tail = node;
    count++;
    return true;
}

template <class T>
void LinkList<T>::Insert(LinkList& other)
{
    // Counted, so that a list inserted into itself doubles instead of growing for ever.
    int32 left = other.count;
    for (T* item = other.First(); left > 0; item = other.Next(), left--) {
        auto* copy = new T;
        *copy = *item;
        if (!Insert(copy))
            delete copy;
    }
}

template <class T>
bool LinkList<T>::InsertBefore(T* item, const long& index)
{
    if (!head && index == 0)
        return Insert(item);
    if (!Position(index))
        return false;
    auto* node = new (std::nothrow) ListNode<T>(item);
    if (!node)
        return false;
    node->prev = cursor->prev;
    node->next = cursor;
    (node->prev ? node->prev->next : head) = node;
    cursor->prev = node;
    cursor = node;
    count++;
    return true;
}

template <class T>
T* LinkList<T>::First()
{
    cursor = head;
    cursorIndex = 0;
    return Current();
}

template <class T>
T* LinkList<T>::Next()
{
    if (!cursor)
        return nullptr;
    cursor = cursor->next;
    cursorIndex++;
    return Current();
}

template <class T>
bool LinkList<T>::Position(const long& index)
{
    if (index < 0 || index >= count)
        return false;
    const long fromCursor = index - cursorIndex;
    if (cursor && labs(fromCursor) < index) {
        if (fromCursor >= 0)
            WalkForward(cursor, fromCursor);
        else
            WalkBackward(cursor, -fromCursor);
    } else if (count - index < index) {
        WalkBackward(tail, count - 1 - index);
    } else {
        WalkForward(head, index);
    }
    cursorIndex = static_cast<int32>(index);
    return true;
}

template <class T>
bool LinkList<T>::Remove()
{
    ListNode<T>* node = cursor;
    if (!node)
        return false;
    (node->prev ? node->prev->next : head) = node->next;
    (node->next ? node->next->prev : tail) = node->prev;
    cursor = node->prev ? node->prev : head;
    cursorIndex = node->prev ? cursorIndex - 1 : 0;
    count--;
    delete node->item;
    delete node;
    return true;
}

template <class T>
bool LinkList<T>::Remove(T* probe, bool all)
{
    const T wanted(*probe); // a copy: the probe may be one of the elements deleted here
    bool found = false;
    while (Search(wanted)) {
        found = Remove();
        if (!all)
            break;
    }
    return found;
}

template <class T>
bool LinkList<T>::IsEqual(const T& a, const T& b)
{
    if constexpr (std::is_base_of_v<LibString, T>)
        return a.Compare(b, false) == 0;
    else
        return a == b;
}

template <class T>
T* LinkList<T>::Search(const T& probe)
{
    for (T* item = First(); item; item = Next()) {
        if (IsEqual(*item, probe))
            return item;
    }
    cursorIndex = -1;
    return nullptr;
}

template <class T>
void LinkList<T>::WalkForward(ListNode<T>* from, long steps)
{
    for (cursor = from; steps > 0; steps--)
        cursor = cursor->next;
}

template <class T>
void LinkList<T>::WalkBackward(ListNode<T>* from, long steps)
{
    for (cursor = from; steps > 0; steps--)
        cursor = cursor->prev;
}
