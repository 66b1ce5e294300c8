// Newer headers of libstdc++ ask the library for this function, which it has since GCC 11 only. The
// prebuilt module brings its own, so that it loads wherever Node.js itself does. It stays inside.
#include <new>

namespace std {
[[noreturn]] __attribute__((visibility("hidden"))) void __throw_bad_array_new_length();
void __throw_bad_array_new_length() { throw bad_array_new_length(); }
}  // namespace std
