// The companion library: VelmCommon loads it when it starts and frees it when it ends. A host may
// put one of its own, which prepares Qt for it, in its place; this one does nothing.

#ifdef _WIN32
#define ADAPTER_EXPORT __declspec(dllexport)
#else
#define ADAPTER_EXPORT
#endif

extern "C" ADAPTER_EXPORT int adapterQtInitVersion()
{
    return 1;
}
