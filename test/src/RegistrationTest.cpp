#include <cstdint>
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <node_api.h>
#include <vector>

namespace {

std::vector<const napi_module*>& registrations() {
    static std::vector<const napi_module*> modules;
    return modules;
}

}  // namespace

/// The module resolves this function from the program, as it would from a host.
extern "C" void napi_module_register(napi_module* module) {
    registrations().push_back(module);
}

/// Hosts find the module in one of two ways; both must work.
TEST(Registration, ByDescriptorAndBySymbol) {
    void* const library = dlopen(HELLO_FILE, RTLD_LAZY | RTLD_LOCAL);
    ASSERT_NE(library, nullptr) << dlerror();

    ASSERT_EQ(registrations().size(), 1U);
    const napi_module& module = *registrations().front();
    EXPECT_EQ(module.nm_version, 1);
    EXPECT_EQ(module.nm_flags, 0U);
    EXPECT_STREQ(module.nm_filename, "../src/scrivo");
    EXPECT_STREQ(module.nm_modname, "hello");
    EXPECT_NE(module.nm_register_func, nullptr);
    EXPECT_EQ(module.nm_priv, nullptr);
    for (const void* reserved : module.reserved) EXPECT_EQ(reserved, nullptr);

    using GetVersion = std::int32_t (*)();
    const auto version =
        reinterpret_cast<GetVersion>(dlsym(library, "node_api_module_get_api_version_v1"));
    ASSERT_NE(version, nullptr);
    EXPECT_EQ(version(), 8);
    EXPECT_NE(dlsym(library, "napi_register_module_v1"), nullptr);
}
