#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>
#include <string>

// Counts the cases of one guarantee, prints a row of the table, and reports the first failures.
class Tally {
 public:
  explicit Tally(std::string guarantee) : mGuarantee(std::move(guarantee)) {}
  Tally(const Tally&) = delete;
  Tally& operator=(const Tally&) = delete;
  ~Tally() {
    std::cout << "guarantee | " << mGuarantee << " | " << mCases << " | " << mFailures << std::endl;
    EXPECT_GT(mCases, 0);
  }

  void Case(bool isKept, const std::string& what) {
    ++mCases;
    if (isKept) return;
    if (++mFailures <= 5) ADD_FAILURE() << mGuarantee << ": " << what;
  }

 private:
  std::string mGuarantee;
  int mCases = 0;
  int mFailures = 0;
};

// The number of cases. `many` takes minutes.
inline int Cases(int few, int many) { return std::getenv("ZELTO_LONG") ? many : few; }
