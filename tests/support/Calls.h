// Calls by name: the function that a row names in its second field, given what the next ones say.
#pragma once

#include "tests/support/Rows.h"

#include <functional>
#include <map>
#include <type_traits>
#include <utility>

template <class T>
T FromField(const std::string& field)
{
    if constexpr (std::is_same_v<T, bool>)
        return field == "yes";
    else if constexpr (std::is_same_v<T, char>)
        return field.at(0);
    else if constexpr (std::is_floating_point_v<T>)
        return static_cast<T>(std::stod(field));
    else if constexpr (std::is_integral_v<T> || std::is_enum_v<T>)
        return static_cast<T>(std::stoll(field));
    else
        return static_cast<T>(field == "null" ? nullptr : field.c_str());
}

inline std::string ToText(const char* text)
{
    return text;
}

template <class T>
std::string ToField(const T& value)
{
    if constexpr (std::is_same_v<T, bool>)
        return value ? "yes" : "no";
    else if constexpr (std::is_arithmetic_v<T>)
        return std::to_string(value);
    else if constexpr (std::is_convertible_v<T, const char*> && std::is_class_v<T>)
        return "'" + ToText(value) + "'";
    else
        return "";
}

// Returns what the function does, if that is a number, a truth ("yes") or a text (in quotes).
template <class Object>
using Calls = std::map<std::string, std::function<std::string(Object&, const Row&)>>;

template <class... A, class Method>
auto Given(Method method)
{
    return [method](auto& object, const Row& row) {
        return [&]<size_t... i>(std::index_sequence<i...>)->std::string
        {
            const auto call = [&] {
                return (object.*method)(FromField<std::decay_t<A>>(row.at(i + 2))...);
            };
            if constexpr (std::is_void_v<decltype(call())>)
                return call(), "";
            else
                return ToField(call());
        }
        (std::index_sequence_for<A...>());
    };
}

// Of several functions of a name the one that is given A.
template <class... A, class Result, class Object>
auto Function(Result (Object::*method)(A...))
{
    return Given<A...>(method);
}

template <class... A, class Result, class Object>
auto Function(Result (Object::*method)(A...) const)
{
    return Given<A...>(method);
}
