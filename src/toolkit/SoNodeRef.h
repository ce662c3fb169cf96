#pragma once

#include <utility>

/// Holds a reference to a node of the toolkit, or to none, and gives it back when it goes.
template <class Node>
class SoNodeRef
{
public:
    SoNodeRef() = default;
    explicit SoNodeRef(Node* node) : node(node)
    {
        if (node != nullptr)
            node->ref();
    }
    SoNodeRef(SoNodeRef const& other) : SoNodeRef(other.node) {}
    SoNodeRef(SoNodeRef&& other) noexcept : node(std::exchange(other.node, nullptr)) {}
    ~SoNodeRef()
    {
        if (node != nullptr)
            node->unref();
    }

    /// The new node is held before the old one is let go, so they may be the same.
    SoNodeRef& operator=(SoNodeRef other) noexcept
    {
        std::swap(node, other.node);
        return *this;
    }

    Node* get() const { return node; }
    Node& operator*() const { return *node; }
    Node* operator->() const { return node; }

private:
    Node* node = nullptr;
};
