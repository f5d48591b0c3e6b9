// What nearly every test uses.
#pragma once

#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <sys/stat.h>
#include <thread>
#include <tuple>
#include <unistd.h>
#include <vector>

// What is said on standard error meanwhile.
template <class Action>
std::string ErrorsOf(Action action)
{
    testing::internal::CaptureStderr();
    action();
    return testing::internal::GetCapturedStderr();
}

// That all of these answers are the same.
inline void ExpectAll(long expected, const std::vector<long>& answers)
{
    EXPECT_EQ(answers, std::vector<long>(answers.size(), expected));
}
