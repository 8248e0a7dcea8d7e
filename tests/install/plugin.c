/* A shared object over the static libraries, which nothing keeps in memory once it is closed. */
#include <dlfcn.h>
#include <orvelpki.h>
#include <stdio.h>

#ifdef PLUGIN
ObjId *parse(const char *text);
ObjId *parse(const char *text) { return pki_ObjId_parse(text); }
#else
int main(int argc, char **argv) {
  void *plugin = argc == 2 ? dlopen(argv[1], RTLD_NOW | RTLD_LOCAL) : NULL;
  if (plugin == NULL || dlsym(plugin, "parse") == NULL || dlclose(plugin) != 0) {
    puts(dlerror());
    return 1;
  }
  if (dlopen(argv[1], RTLD_NOW | RTLD_NOLOAD) != NULL) {
    puts("still loaded after dlclose");
    return 1;
  }
  return 0;
}
#endif
