# Stops the build unless `address` is an absolute http or https address: a program that asks anything else than the web
# would be a surprise.
function(sitekeeper_require_web_address address)
  set(host "[A-Za-z0-9]([A-Za-z0-9.-]*[A-Za-z0-9])?")
  if(NOT address MATCHES "^https?://${host}(:[0-9]+)?(/[A-Za-z0-9._~:/?#@!$&'()*+,=%-]*)?$")
    message(FATAL_ERROR "SITEKEEPER_UPDATES_URL is no absolute http or https address: ${address}")
  endif()
endfunction()
