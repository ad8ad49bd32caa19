// What the sanitizers report of libraries that are not ours, and that is no fault of the tests. Other builds never call
// these.
extern "C" const char* __lsan_default_suppressions()
{
    return "leak:libfontconfig.so\n" // keeps its patterns behind pointers that it packs
           "leak:_dl_init\n";        // what libraries allocate while they are loaded
}

extern "C" const char* __tsan_default_suppressions()
{
    return "race:libfontconfig.so\n"; // made ready on a thread of Pango's own
}
