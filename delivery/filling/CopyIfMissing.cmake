# Copies FROM to TO where there is no TO; under another name first, so that a half copy is never taken for
# the user's file. That name may stay behind as a second link to the new file.
if(NOT EXISTS "${TO}")
  file(COPY_FILE "${FROM}" "${TO}.new")
  file(RENAME "${TO}.new" "${TO}" NO_REPLACE RESULT outcome)
  file(REMOVE "${TO}.new")
  if(NOT EXISTS "${TO}")
    message(FATAL_ERROR "cannot make ${TO}: ${outcome}")
  endif()
endif()
