// What the sanitizers look at beside their defaults, for every program built with them: a program that a test
// starts reports as the test itself does, by an exit status that nothing else gives.
extern "C" {
const char* __asan_default_options();
const char* __asan_default_options() {
    return "exitcode=99:detect_stack_use_after_return=1:strict_string_checks=1";
}
const char* __ubsan_default_options();
const char* __ubsan_default_options() {
    return "exitcode=99:print_stacktrace=1";
}
}
