// Loading dylibs, with macOS's numbers.
#ifndef QZL_DLFCN_H
#define QZL_DLFCN_H

#define RTLD_LAZY 0x1
#define RTLD_NOW 0x2
#define RTLD_LOCAL 0x4
#define RTLD_GLOBAL 0x8

#define RTLD_DEFAULT ((void *)-2)

#ifdef __cplusplus
extern "C" {
#endif

/// A handle of the dylib; null if it cannot be loaded.
void *dlopen(const char *path, int mode);

/// The address of what the dylib exports; null if it exports nothing of this name.
void *dlsym(void *handle, const char *name);

/// Where an address lies: the path and the header of its image, the symbol before it and that symbol's
/// address.
typedef struct dl_info {
    const char *dli_fname;
    void *dli_fbase;
    const char *dli_sname;
    void *dli_saddr;
} Dl_info;

/// 0 if the address is in no image.
int dladdr(const void *address, Dl_info *info);

/// What went wrong in the last call; null if nothing did.
char *dlerror(void);

#ifdef __cplusplus
}
#endif

#endif
