/* SPDX-License-Identifier: MIT
 * A user's program: prints the install directory without a registry key, with one, and after its
 * removal. */
#include <quorix/quorix.h>
#include <stdio.h>
#include <windows.h>

static void print_directory(void) {
  char directory[256] = "";
  qqgenv("QUORIX", directory);
  printf("%s\n", directory);
}

int main(void) {
  static const char name[] = "SOFTWARE\\Quorix", path[] = "d:\\told\\there";
  HKEY key;
  RegDeleteKeyA(HKEY_LOCAL_MACHINE, name);
  print_directory();
  if (RegCreateKeyExA(HKEY_LOCAL_MACHINE, name, 0, NULL, 0, KEY_SET_VALUE, NULL, &key, NULL) != 0)
    return 1;
  RegSetValueExA(key, "Path", 0, REG_SZ, (const BYTE *)path, sizeof path);
  RegCloseKey(key);
  print_directory();
  RegDeleteKeyA(HKEY_LOCAL_MACHINE, name);
  print_directory();
  return 0;
}
