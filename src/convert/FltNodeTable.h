#pragma once

#include <map>

/// Enters a node in a table that holds a reference to each of its nodes. One that stood there before loses
/// the table's reference.
template <class Node>
void enter(std::map<int, Node*>& table, int key, Node* node)
{
    node->ref();
    Node*& entry = table[key];
    if (entry != nullptr)
        entry->unref();
    entry = node;
}
