// What the sanitizers are told in every program of a sanitizer build, also where no environment says it: while CTest lists the
// tests of a program, and when somebody starts hollerwick-host by hand.

extern "C" {

const char* __asan_default_options();
const char* __lsan_default_options();
const char* __lsan_default_suppressions();

const char* __asan_default_options()
{
    return "detect_stack_use_after_return=1";
}

const char* __lsan_default_options()
{
    return "print_suppressions=0";
}

/// Caches of libraries that live as long as the process, and the screen of Qt's offscreen platform.
const char* __lsan_default_suppressions()
{
    return "leak:libfontconfig\n"
           "leak:libQt5XcbQpa\n"
           "leak:libqoffscreen\n";
}
}
