#pragma once

#include "oribund/host/base/LightweightString.h"
#include "oribund/host/toolkit/lists/TableWidget.h"
#include "oribund/host/toolkit/lists/iTableAdaptor.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace oribund::test
{

/** A list of names, which are fixed, and texts that the user may change; writes down what is stored. */
class TableList : public iTableAdaptor
{
public:
    using Rows = std::vector<std::pair<WString, WString>>;

    TableList(std::initializer_list<Rows::value_type> all)
        : TableList(Rows(all))
    {
    }

    explicit TableList(Rows all)
        : rows(std::move(all))
    {
        for (std::size_t i = 0; i < rows.size(); ++i)
            ids_.push_back(++lastId_);
    }

    std::vector<TableColumn> getColumnDefinitions() const override
    {
        return {{"name", L"Name", 100, 40, false}, {"text", L"Text", 0, 40, true}};
    }

    int getNumRows() const override { return static_cast<int>(rows.size()); }

    TableCell getCellData(const XY<int>& cell) const override
    {
        ++reads;
        const auto& row = rows.at(static_cast<std::size_t>(cell.y));
        return {cell.x == 0 ? row.first : row.second, !locked};
    }

    bool storeFieldText(const WString& text, const XY<int>& cell) override
    {
        if (text == refuses)
            return false;
        rows.at(static_cast<std::size_t>(cell.y)).second = text;
        journal_ += std::to_string(cell.x) + "," + std::to_string(cell.y) + "=" + toUTF8(text).c_str() + " ";
        tableChanged();
        if (onStore)
            onStore();
        return true;
    }

    IdStamp getRowId(int row) const override { return {ids_.at(static_cast<std::size_t>(row)), 0, 0}; }

    bool isVisible() const override { return !hidden; }

    void fill(int count)
    {
        rows.clear();
        ids_.clear();
        for (int i = 0; i < count; ++i) {
            rows.emplace_back(L"row " + toWide(std::to_string(i)), L"");
            ids_.push_back(++lastId_);
        }
        tableChanged();
    }

    void insert(int row, const WString& name, const WString& text)
    {
        rows.emplace(rows.begin() + row, name, text);
        ids_.insert(ids_.begin() + row, ++lastId_);
        tableChanged();
    }

    void remove(int row)
    {
        rows.erase(rows.begin() + row);
        ids_.erase(ids_.begin() + row);
        tableChanged();
    }

    /** "column,row=text " of each text stored. */
    const std::string& stored() const { return journal_; }

    Rows rows;
    WString refuses{L"\1"};
    bool locked = false;
    bool hidden = false;
    std::function<void()> onStore;
    mutable int reads = 0;

private:
    std::vector<int> ids_;
    int lastId_ = 0;
    std::string journal_;
};

} // namespace oribund::test
