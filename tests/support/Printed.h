#pragma once

#include <gtest/gtest.h>

#include <string>

// What an object prints of itself on standard error, which is all that it holds.
template <class Object>
std::string Printed(Object& object)
{
    testing::internal::CaptureStderr();
    object.PrintToStream();
    return testing::internal::GetCapturedStderr();
}
