// Attributes of a file in a store, without the file.
#pragma once

#include "store/Store.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

inline const NodeIdentity kFile = { "/nowhere/file", 17, 4711, 1, false };

inline ssize_t Write(Store& store, const std::string& name, const std::string& value)
{
    return store.WriteAttribute(kFile, name, 'RAWT', 0, value);
}

// The value, or the number of the error.
inline std::string Read(Store& store, const std::string& name)
{
    attr_info info;
    if (const status_t error = store.GetAttribute(kFile, name, &info); error != B_OK)
        return std::to_string(error);
    std::string value(static_cast<size_t>(info.size), '\0');
    EXPECT_EQ(store.ReadAttribute(kFile, name, 0, value.data(), value.size()), info.size);
    return value;
}

// Statements in the file of a store, and what the last column of their rows holds, each with a
// blank.
inline std::string Sql(const std::string& path, const std::string& statements)
{
    sqlite3* database = nullptr;
    std::string result;
    const auto add = [](void* text, int columns, char** values, char**) {
        *static_cast<std::string*>(text) += std::string(values[columns - 1]) + " ";
        return 0;
    };
    EXPECT_EQ(sqlite3_open(path.c_str(), &database), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(database, statements.c_str(), add, &result, nullptr), SQLITE_OK)
        << sqlite3_errmsg(database);
    sqlite3_close(database);
    return result;
}
