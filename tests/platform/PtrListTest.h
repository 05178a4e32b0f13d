// SPDX-License-Identifier: MIT
// The base of tests of a list: items with numbers, and a list of them.
#pragma once

#include "platform/toolkit/PtrList.h"

#include <QObject>

#include <memory>
#include <vector>

namespace lumi::test {

struct Item
{
    /// @param deleted counts the items that are deleted
    explicit Item(int n, int *deleted = nullptr)
        : number(n)
        , counter(deleted)
    { }

    Item(const Item &) = delete;
    Item &operator=(const Item &) = delete;

    ~Item()
    {
        if (counter != nullptr) {
            ++*counter;
        }
    }

    int number;
    int *counter;
};

} // namespace lumi::test

class PtrListTest : public QObject
{
    Q_OBJECT

protected:
    using Item = lumi::test::Item;

    /// A new list of this many items, numbered from 0.
    void fill(int count);
    [[nodiscard]] std::vector<int> numbers() const;

    std::vector<std::unique_ptr<Item>> m_items;
    std::unique_ptr<PtrList<Item>> m_list;
};
