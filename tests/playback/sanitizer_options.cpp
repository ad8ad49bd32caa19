// GLib leaves its first table of names behind when the types of a large plugin make it grow, for readers that may still
// be looking into it. The address sanitizer sees that only with whole call stacks; other builds never call these.
extern "C" const char* __asan_default_options()
{
    return "fast_unwind_on_malloc=0";
}

extern "C" const char* __lsan_default_suppressions()
{
    return "leak:_dl_init\n"; // what libraries allocate while they are loaded
}
