#include <napi.h>

static Napi::Object Init(Napi::Env env, Napi::Object exports) {
    (void)env;
    return exports;
}

NODE_API_MODULE(hello, Init)
