#include <cstdlib>
#include <new>

// The standard library's own answers to a misuse carry texts, old string classes and the reading of mangled names, more
// than 100 KB that no user ever sees. These stand in their place. All of them must be here: one that is missing
// brings in the library's file, which defines the others a second time.
// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl58-cpp)
namespace std {

// A text or a list beyond any size is memory that can't be had.
void __throw_bad_alloc() { throw bad_alloc(); }
void __throw_bad_array_new_length() { throw bad_alloc(); }
void __throw_length_error(const char*) { throw bad_alloc(); }

// Errors of the program itself, which nothing may catch.
void __throw_logic_error(const char*) { abort(); }
void __throw_out_of_range(const char*) { abort(); }
void __throw_out_of_range_fmt(const char*, ...) { abort(); }
void __throw_bad_function_call() { abort(); }

}  // namespace std

namespace __gnu_cxx {

// Where an exception goes that nobody catches: a window's program has nowhere to write its name.
void __verbose_terminate_handler() { abort(); }

}  // namespace __gnu_cxx
// NOLINTEND(bugprone-reserved-identifier,cert-dcl58-cpp)
