# SPDX-License-Identifier: MIT
# Runs at installation, since the prefix is known only now: writes the files that name the helper
# programs, and chooses the folder of the machine profile.
get_filename_component(CMAKE_INSTALL_PREFIX "${CMAKE_INSTALL_PREFIX}" ABSOLUTE)
get_filename_component(LUMI_LIBEXEC_DIR "${LUMI_LIBEXECDIR}/lumivault" ABSOLUTE
  BASE_DIR "${CMAKE_INSTALL_PREFIX}")
# The system's configuration folder serves both system prefixes.
if(CMAKE_INSTALL_PREFIX MATCHES "^/usr(/local)?/?$")
  set(configuration /etc/xdg/lumivault)
else()
  set(configuration ${CMAKE_INSTALL_PREFIX}/etc/xdg/lumivault)
endif()
configure_file(${LUMI_CARDS}/lumivault-markers.service
  ${LUMI_SCRATCH}/lumivault-markers.service @ONLY)
configure_file(${LUMI_CARDS}/85-lumivault-cards.rules
  ${LUMI_SCRATCH}/85-lumivault-cards.rules @ONLY)
file(INSTALL ${LUMI_PROFILE} DESTINATION ${configuration})
file(INSTALL ${LUMI_SCRATCH}/lumivault-markers.service
  DESTINATION ${CMAKE_INSTALL_PREFIX}/lib/systemd/system)
file(INSTALL ${LUMI_SCRATCH}/85-lumivault-cards.rules
  DESTINATION ${CMAKE_INSTALL_PREFIX}/lib/udev/rules.d)
