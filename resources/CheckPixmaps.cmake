# SPDX-License-Identifier: MIT
cmake_minimum_required(VERSION 3.25)
# cmake -DDIR=<pixmap folder> -P CheckPixmaps.cmake
# Fails unless every pixmap the program asks for is there in the size the screens are laid
# out for, has a twin of twice that size, and shows a state that no other pixmap shows.

# Width and height of a PNG file, or "none".
function(png_size file result)
  set(${result} none PARENT_SCOPE)
  if(EXISTS ${file})
    file(READ ${file} head LIMIT 24 HEX)
    if(head MATCHES "^89504e470d0a1a0a0000000d49484452(........)(........)$")
      math(EXPR width "0x${CMAKE_MATCH_1}")
      math(EXPR height "0x${CMAKE_MATCH_2}")
      set(${result} ${width}x${height} PARENT_SCOPE)
    endif()
  endif()
endfunction()

set(bad "")
set(seen "")

function(expect width height)
  math(EXPR width2x "${width} * 2")
  math(EXPR height2x "${height} * 2")
  foreach(name IN LISTS ARGN)
    png_size(${DIR}/${name}.png size)
    png_size(${DIR}/${name}@2x.png size2x)
    if(NOT "${size} ${size2x}" STREQUAL "${width}x${height} ${width2x}x${height2x}")
      string(APPEND bad "  ${name}: ${size} and ${size2x}, not ${width}x${height} and twice that\n")
    elseif(NOT name MATCHES "^bg_")
      file(SHA256 ${DIR}/${name}.png hash)
      if(hash IN_LIST seen)
        string(APPEND bad "  ${name}: looks like another one\n")
      endif()
      list(APPEND seen ${hash})
    endif()
  endforeach()
  set(bad "${bad}" PARENT_SCOPE)
  set(seen "${seen}" PARENT_SCOPE)
endfunction()

expect(72 400 bg_left)
expect(16 16 bg_right bg_right_copy)
expect(48 48 bg_right_top)
expect(58 58 look_a look_a_push look_a_on look_a_push_on look_b look_b_push look_b_on
  look_b_push_on look_c look_c_push look_c_on look_c_push_on look_d look_d_push goto_top
  goto_top_push)
expect(236 236 top_copy top_copy_push top_look top_look_push)
expect(244 112 copy_cf copy_cf_push copy_cf_gray copy_sd copy_sd_push copy_sd_gray)
expect(175 157 frame_pic_l frame_pic_l_on frame_folder_l frame_folder_l_on frame_folder_pl
  frame_folder_pl_on frame_folder_l_back frame_folder_l_back_on)
expect(76 76 frame_pic_s frame_pic_s_on frame_folder_s frame_folder_s_on frame_folder_ps
  frame_folder_ps_on frame_folder_s_back frame_folder_s_back_on)
expect(30 30 check_l check_l_on)
expect(22 22 check_s check_s_on to_top)
expect(32 32 spread scaledown fit i_left i_right)
expect(16 16 cut copy paste)
expect(64 64 lumivault)
if(bad)
  message(FATAL_ERROR "pixmaps in ${DIR}:\n${bad}")
endif()
