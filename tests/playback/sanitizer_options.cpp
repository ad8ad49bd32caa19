// GLib leaves its first table of names behind when the types of a large plugin make it grow, for readers that may still
// be looking into it. The address sanitizer sees that only with whole call stacks; other builds never call this.
extern "C" const char* __asan_default_options()
{
    return "fast_unwind_on_malloc=0";
}
