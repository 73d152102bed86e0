# -DSCORVANE_SANITIZE=ON: everything built with AddressSanitizer and UndefinedBehaviorSanitizer.
# Undefined behaviour stops the program (no recovery), so any report fails the test that ran it.
option(SCORVANE_SANITIZE "Build everything with AddressSanitizer and UndefinedBehaviorSanitizer"
       OFF)
if(SCORVANE_SANITIZE)
    if(SCORVANE_FUZZ)
        message(FATAL_ERROR "SCORVANE_SANITIZE and SCORVANE_FUZZ are separate builds")
    endif()
    set(sanitize_flags -fsanitize=address,undefined -fno-sanitize-recover=all
                       -fno-omit-frame-pointer)
    add_compile_options(${sanitize_flags})
    add_link_options(${sanitize_flags})
endif()
