# vira_embed_file(FILE INC): writes the bytes of FILE as a C++ initializer list ("0x89,0x50,...") to INC, at
# configure time and again whenever FILE changes, so that sources can carry small binary resources
# (toolbar images) with   const unsigned char kImage[] = {
#                         #include "name.inc"
#                         };
function(vira_embed_file file inc)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${file})
  file(READ ${file} hex HEX)
  string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${hex}")
  string(REGEX REPLACE "(0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,)" "\\1\n"
         bytes "${bytes}")
  file(CONFIGURE OUTPUT ${inc} CONTENT "${bytes}\n")
endfunction()
