// Leaks inside libraries that are not ours, which keep what they allocate once until the process ends.

extern "C" const char* __lsan_default_suppressions();

extern "C" const char* __lsan_default_suppressions() {
    return "leak:libpulse\n"
           "leak:libfontconfig\n"
           "leak:libdbus\n"
           "leak:libglib\n"
           "leak:libQt6\n"
           "leak:libsane\n"
           "leak:libx264\n";
}
