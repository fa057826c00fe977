/// Read by the address sanitizer: these libraries keep memory of an encoder that was refused or closed.
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions();

const char* __lsan_default_suppressions() { return "leak:libvorbisenc\nleak:libx264\nleak:libx265\n"; }
