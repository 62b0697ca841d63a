#pragma once

#include <napi.h>

namespace binding {

/// Makes one Node-API call; returns whether it succeeded. If not, raises its
/// error as node-addon-api does, but leaves an exception that is already pending
/// as it is. node-addon-api would clear and rethrow it, which ends the process
/// when the exception is the timeout of a `vm` script.
template <typename... Parameters, typename... Arguments>
bool attempt(Napi::Env env, napi_status (*function)(napi_env, Parameters...),
             Arguments... arguments) {
    napi_status status = function(env, arguments...);
    if (status != napi_ok && !env.IsExceptionPending()) {
        // Asking for the pending exception has cleared the error: provoke it again.
        status = function(env, arguments...);
        if (status != napi_ok) Napi::Error::New(env).ThrowAsJavaScriptException();
    }
    return status == napi_ok;
}

}  // namespace binding
