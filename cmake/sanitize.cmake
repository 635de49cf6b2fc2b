# SPDX-License-Identifier: MIT
# AddressSanitizer and UndefinedBehaviorSanitizer for everything in the build, any report fatal.
if(QUORIX_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all
    -fno-omit-frame-pointer -O1)
  add_link_options(-fsanitize=address,undefined)
endif()
if(QUORIX_BUILD_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()
