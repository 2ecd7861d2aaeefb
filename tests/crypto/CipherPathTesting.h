#pragma once

#include "crypto/CipherPath.h"

#include <gtest/gtest.h>
#include <ostream>
#include <string>

namespace kelvora {

// CipherPathTest runs a test once per cipher path. A path this CPU cannot run is skipped
// with a note, so a run on a CPU without VAES says what it did not test.
class CipherPathTest : public ::testing::TestWithParam<CipherPath> {
protected:
    void SetUp() override {
        if (!CipherPathAvailable(GetParam())) {
            GTEST_SKIP() << "this CPU cannot run the " << CipherPathName(GetParam()) << " path";
        }
    }
};

inline void PrintTo(CipherPath path, std::ostream* out) {
    *out << CipherPathName(path);
}

inline std::string CipherPathTestName(const ::testing::TestParamInfo<CipherPath>& info) {
    return std::string(CipherPathName(info.param));
}

#define INSTANTIATE_CIPHER_PATHS(suite)                                                            \
    INSTANTIATE_TEST_SUITE_P(, suite, ::testing::ValuesIn(kCipherPaths), CipherPathTestName)

} // namespace kelvora
