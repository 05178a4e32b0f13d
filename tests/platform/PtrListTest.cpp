// SPDX-License-Identifier: MIT
#include "tests/platform/PtrListTest.h"

void PtrListTest::fill(int count)
{
    m_list = std::make_unique<PtrList<Item>>();
    m_items.clear();
    for (int i = 0; i < count; ++i) {
        m_items.push_back(std::make_unique<Item>(i));
        m_list->append(m_items.back().get());
    }
}

std::vector<int> PtrListTest::numbers() const
{
    std::vector<int> all;
    for (const Item *item : *m_list) {
        all.push_back(item->number);
    }
    return all;
}
