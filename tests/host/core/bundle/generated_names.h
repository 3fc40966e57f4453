#pragma once

#include <cstddef>
#include <string>
#include <vector>

/// Relative paths of files, of every sort that the platform and part names allow; always the same ones, no two equal in
/// any ASCII case.
std::vector<std::string> generatedNames(std::size_t count);
