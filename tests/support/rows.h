// SPDX-License-Identifier: MIT
// Data-driven tests without a line per column:
//
//     void sizes_data()
//     {
//         lumi::test::columns<int, QSize>();
//         QTest::newRow("half") << 50 << QSize(320, 240);
//     }
//     void sizes()
//     {
//         const auto [percent, size] = lumi::test::row<int, QSize>();
//
// A test that uses a value in a lambda names its columns with QTest::addColumn() and QFETCH
// instead: clang 14 can't capture a structured binding.
#pragma once

#include <QTest>

#include <array>
#include <cstddef>
#include <tuple>
#include <utility>

namespace lumi::test {

inline constexpr std::array kColumnNames = {"0", "1", "2", "3", "4", "5", "6", "7"};

namespace detail {

template <typename... Types, std::size_t... Columns>
void columns(std::index_sequence<Columns...> /*of the types*/)
{
    (QTest::addColumn<Types>(kColumnNames[Columns]), ...);
}

template <typename... Types, std::size_t... Columns>
std::tuple<Types...> row(std::index_sequence<Columns...> /*of the types*/)
{
    return {
        *static_cast<const Types *>(QTest::qData(kColumnNames[Columns], qMetaTypeId<Types>()))...};
}

} // namespace detail

/// Declares a column for each type.
template <typename... Types> void columns()
{
    detail::columns<Types...>(std::index_sequence_for<Types...>());
}

/// The values of the current row. The types are those given to columns().
template <typename... Types> std::tuple<Types...> row()
{
    return detail::row<Types...>(std::index_sequence_for<Types...>());
}

} // namespace lumi::test
