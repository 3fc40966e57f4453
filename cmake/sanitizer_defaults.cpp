// What the sanitizers are told in every program of a sanitizer build, also where no environment says it: while CTest
// lists the tests of a program, and when somebody starts hollerwick-host by hand.

extern "C" {

// The sanitizers' library looks for these by name, so that they must be seen outside of the program.
#define SEEN __attribute__((visibility("default")))

SEEN const char* __asan_default_options();
SEEN const char* __lsan_default_options();
SEEN const char* __lsan_default_suppressions();

/// The storage of threads is not asked for: LeakSanitizer now and then fell over that of threads that had ended, where
/// file dialogs had started and ended many.
const char* __asan_default_options()
{
    return "detect_stack_use_after_return=1:intercept_tls_get_addr=0";
}

const char* __lsan_default_options()
{
    return "print_suppressions=0";
}

/// Caches of libraries that live as long as the process, the screen of Qt's offscreen platform, and the guard that Qt's
/// delivery of events holds while an exception of a handler passes through it.
const char* __lsan_default_suppressions()
{
    return "leak:libfontconfig\n"
           "leak:libQt5XcbQpa\n"
           "leak:libQt5WebKit\n"
           "leak:QtSharedPointer::ExternalRefCountData::getAndRef\n"
           "leak:libqoffscreen\n";
}
}
