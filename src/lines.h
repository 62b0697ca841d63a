#pragma once

#include <napi.h>

namespace binding {

/// Exports a class that turns blocks of lines into blocks of lines, and a function that loads the
/// templates of its template engine. lib/lines.js checks the arguments; it is their only user.
void addLines(Napi::Env env, Napi::Object exports);

}  // namespace binding
