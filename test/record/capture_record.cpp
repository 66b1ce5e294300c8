// Loads an extension module in place of the host and prints, as one line of JSON, every module
// record it registers and every static initialiser it has.
//
//   capture_record FILE.node
//
// The only function of the host that exists here is napi_module_register. The module is bound
// lazily, so it loads as long as it calls no other; at its first call of another the dynamic linker
// ends this program with "symbol lookup error".
//
// Addresses are printed as offsets in the module's file, as nm prints them. The record's layout is
// written down here once more, without the host's headers: it is the binary interface that every
// host relies on.

#include <dlfcn.h>
#include <link.h>

#include <cstdint>
#include <cstdio>
#include <vector>

struct Module_record {
  int nm_version;
  unsigned int nm_flags;
  const char* nm_filename;
  void* nm_register_func;
  const char* nm_modname;
  void* nm_priv;
  void* reserved[4];
};

namespace {

std::vector<const Module_record*> registered;

std::uintptr_t address_of(const void* pointer) { return reinterpret_cast<std::uintptr_t>(pointer); }

// The static initialisers of a loaded module, as addresses.
std::vector<std::uintptr_t> initialisers_of(const link_map& module) {
  std::uintptr_t start = 0;
  std::size_t bytes = 0;
  for (const ElfW(Dyn)* entry = module.l_ld; entry->d_tag != DT_NULL; ++entry) {
    if (entry->d_tag == DT_INIT_ARRAY) start = module.l_addr + entry->d_un.d_ptr;
    if (entry->d_tag == DT_INIT_ARRAYSZ) bytes = entry->d_un.d_val;
  }
  const auto* first = reinterpret_cast<const std::uintptr_t*>(start);
  return {first, first + bytes / sizeof(std::uintptr_t)};
}

// The names of the record have nothing in them that JSON would have to escape.
void print_record(const Module_record& record, std::uintptr_t base) {
  std::printf(R"({"nm_version":%d,"nm_flags":%u,"nm_filename":"%s","nm_register_func":%ju,)",
              record.nm_version, record.nm_flags, record.nm_filename,
              static_cast<std::uintmax_t>(address_of(record.nm_register_func) - base));
  std::printf(R"("nm_modname":"%s","nm_priv":%ju,"reserved":[%ju,%ju,%ju,%ju]})", record.nm_modname,
              static_cast<std::uintmax_t>(address_of(record.nm_priv)),
              static_cast<std::uintmax_t>(address_of(record.reserved[0])),
              static_cast<std::uintmax_t>(address_of(record.reserved[1])),
              static_cast<std::uintmax_t>(address_of(record.reserved[2])),
              static_cast<std::uintmax_t>(address_of(record.reserved[3])));
}

}  // namespace

extern "C" __attribute__((visibility("default"))) void napi_module_register(Module_record* record) {
  registered.push_back(record);
}

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: capture_record FILE.node\n");
    return 2;
  }
  void* handle = dlopen(argv[1], RTLD_LAZY | RTLD_LOCAL);
  link_map* module = nullptr;
  if (handle == nullptr || dlinfo(handle, RTLD_DI_LINKMAP, &module) != 0) {
    std::fprintf(stderr, "%s\n", dlerror());
    return 1;
  }

  std::printf(R"({"records":[)");
  const char* separator = "";
  for (const Module_record* record : registered) {
    std::printf("%s", separator);
    print_record(*record, module->l_addr);
    separator = ",";
  }
  std::printf(R"(],"initialisers":[)");
  separator = "";
  for (const std::uintptr_t address : initialisers_of(*module)) {
    std::printf("%s%ju", separator, static_cast<std::uintmax_t>(address - module->l_addr));
    separator = ",";
  }
  std::printf("]}\n");
  return 0;
}
