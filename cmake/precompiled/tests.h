#pragma once

#include "cmake/precompiled/standard.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
