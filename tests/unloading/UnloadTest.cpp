#include <dlfcn.h>
#include <gtest/gtest.h>

#include <string>
#include <thread>

extern "C" {
#include <libavformat/avformat.h>
}

#include "Kestro/Conf/DataHelpers/DataHelpers.h"  // for the function's type: the library is not linked
#include "Kestro/Conf/HelperException.h"
#include "Kestro/Conf/IFormatFile.h"
#include "Kestro/Conf/IPreset.h"

namespace Kestro::Conf {
namespace {

constexpr const char* kLibrary = KESTRO_LIBRARY;
// CreateDataHelper(const std::string&, const std::string&)
constexpr const char* kFunction = "_Z16CreateDataHelperRKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEES6_";

bool IsLoaded() {
    void* library = dlopen(kLibrary, RTLD_NOW | RTLD_NOLOAD);
    if (library != nullptr) dlclose(library);
    return library != nullptr;
}

/// Whatever the library made is gone when this returns.
void Use(void* library) {
    const auto create = reinterpret_cast<decltype(&CreateDataHelper)>(dlsym(library, kFunction));
    ASSERT_NE(create, nullptr) << dlerror();
    const auto helper = create(IPreset::KEY_FORMAT, IFormatFile::FORMAT_MP4);
    EXPECT_GE(helper->GetRefCount(), 2);
    EXPECT_EQ(helper->GetDefaultSettings()[IFormatFile::TAG_CONTAINER].GetString(), IFormatFile::FORMAT_MP4);
    ConstraintMap constraints;
    helper->FillConstraints(constraints);
    for (const auto& [key, constraint] : constraints) {
        EXPECT_FALSE(constraint->IsValid(Core::Property("", "no such codec")));
        EXPECT_THROW(constraint->IsValid(Core::Property("", 1)), Exception);
    }
    EXPECT_THROW(create(IPreset::KEY_FORMAT, "no such format"), HelperException);
}

void ComeAndGo(int rounds) {
    for (int round = 0; round < rounds; ++round) {
        SCOPED_TRACE(round);
        void* library = dlopen(kLibrary, RTLD_NOW | RTLD_LOCAL);
        ASSERT_NE(library, nullptr) << dlerror();
        Use(library);
        ASSERT_EQ(dlclose(library), 0) << dlerror();
    }
}

TEST(Unloading, TheLibraryComesAndGoesAThousandTimes) {
    // FFmpeg stays: what the libraries below it lose when they are unloaded is not the question.
    ASSERT_GT(avformat_version(), 0U);
    for (int round = 0; round < 100; ++round) {
        ASSERT_FALSE(IsLoaded()) << "something holds on to it after round " << round;
        ComeAndGo(1);
    }
    std::thread other([] { ComeAndGo(450); });
    ComeAndGo(450);
    other.join();
    EXPECT_FALSE(IsLoaded());
}

}  // namespace
}  // namespace Kestro::Conf
