// One link of a LinkList. The list deletes node and element; the node itself owns nothing.
#pragma once

template <class T>
class ListNode {
public:
    explicit ListNode(T* element) : item(element) { }
    virtual ~ListNode() = default;

    ListNode* prev = nullptr; // null at the head
    T* item;
    ListNode* next = nullptr; // null at the tail
};
