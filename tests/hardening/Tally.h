#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>
#include <string>

// Counts the cases of one promise, prints them as a row of the table, and fails with the first few.
class Tally {
 public:
  explicit Tally(std::string promise) : mPromise(std::move(promise)) {}
  Tally(const Tally&) = delete;
  Tally& operator=(const Tally&) = delete;
  ~Tally() {
    std::cout << "promise | " << mPromise << " | " << mCases << " | " << mFailures << std::endl;
    EXPECT_GT(mCases, 0);
  }

  void Case(bool isKept, const std::string& what) {
    ++mCases;
    if (isKept) return;
    if (++mFailures <= 5) ADD_FAILURE() << mPromise << ": " << what;
  }

 private:
  std::string mPromise;
  int mCases = 0;
  int mFailures = 0;
};

// The number of cases: the long one takes minutes.
inline int Cases(int few, int many) { return std::getenv("ZELTO_LONG") ? many : few; }
