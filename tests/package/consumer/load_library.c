/* SPDX-License-Identifier: MIT
 * consumer.c's picture through operations that are looked up in the DLL at run time. */
#include <quorix/quorix.h>
#include <windows.h>

/* A pointer to a function of the DLL, of the type that the header declares. */
#define LOOK_UP(name) \
  __typeof__(&name) my_##name = (__typeof__(&name))(void *)GetProcAddress(dll, #name)

int main(int argc, char **argv) {
  int32_t w = 6, h = 3, white = 1, status = 1;
  int32_t device = -101, order = 1, colours = 0;
  HMODULE dll = LoadLibraryA("quorix.dll");
  if (argc != 2 || dll == NULL) return 2;

  LOOK_UP(qqvini);
  LOOK_UP(qqvclr);
  LOOK_UP(qqvlin);
  LOOK_UP(qqppng);
  if (!my_qqvini || !my_qqvclr || !my_qqvlin || !my_qqppng) return 3;
  my_qqvini(-1, 1, &w, &h, 1, &white);
  my_qqvclr(0x010000FF);
  my_qqvlin(1, 1, 4, 1);
  my_qqppng(argv[1], &device, &order, &w, &h, NULL, &colours, &status);
  FreeLibrary(dll);
  return status == 0 ? 0 : 4;
}
