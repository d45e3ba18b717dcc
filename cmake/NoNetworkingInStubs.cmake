# The declaration stubs in apple-stubs/ list every Apple API the app calls.
# This check fails when any of them is a networking API, so "Tolvane never
# goes online" is checked rather than promised: an adapter cannot call what
# the stubs do not declare without failing the type-check.
#
#   cmake -DSTUBS_DIR=<dir> -P NoNetworkingInStubs.cmake

cmake_policy(VERSION 3.25)

file(GLOB_RECURSE headers "${STUBS_DIR}/*.h")
if(NOT headers)
    message(FATAL_ERROR "No headers found under ${STUBS_DIR}")
endif()

# Whole identifiers that are networking calls or types.
set(forbiddenNames
    socket socketpair connect bind listen accept getaddrinfo freeaddrinfo getnameinfo
    gethostbyname gethostbyname2 gethostbyaddr sendto recvfrom sendmsg recvmsg
    NSHost NSStream NSInputStream NSOutputStream NSPort NSSocketPort NSNetService NSNetServiceBrowser
    NSURLRequest NSMutableURLRequest NSURLResponse NSHTTPURLResponse NSURLCache NSURLProtocol
    NSURLDownload NSURLHandle NSXMLParser NSPortMessage
    SCNetworkReachabilityCreateWithName SCNetworkReachabilityCreateWithAddress)
# Identifier prefixes of whole networking families.
set(forbiddenPrefixes
    NSURLSession NSURLConnection CFSocket CFNetwork CFHost CFHTTP CFNetService CFReadStream CFWriteStream
    CFStreamCreatePair CFURLCreateData nw_ NWConnection NWListener NWPath SCNetwork)
# Headers whose inclusion brings networking in.
set(forbiddenIncludes
    "Network/" "CFNetwork/" "SystemConfiguration/" "sys/socket.h" "netinet/" "arpa/inet.h" "netdb.h")

set(findings "")
foreach(header IN LISTS headers)
    file(RELATIVE_PATH shown "${STUBS_DIR}" "${header}")
    file(READ "${header}" text)
    foreach(include IN LISTS forbiddenIncludes)
        string(FIND "${text}" "${include}" at)
        if(NOT at EQUAL -1)
            list(APPEND findings "${shown}: includes ${include}")
        endif()
    endforeach()
    string(REGEX MATCHALL "[A-Za-z_][A-Za-z0-9_]*" identifiers "${text}")
    list(REMOVE_DUPLICATES identifiers)
    foreach(identifier IN LISTS identifiers)
        if(identifier IN_LIST forbiddenNames)
            list(APPEND findings "${shown}: ${identifier}")
        endif()
        foreach(prefix IN LISTS forbiddenPrefixes)
            string(FIND "${identifier}" "${prefix}" at)
            if(at EQUAL 0)
                list(APPEND findings "${shown}: ${identifier}")
            endif()
        endforeach()
    endforeach()
endforeach()

list(LENGTH headers headerCount)
if(findings)
    list(JOIN findings "\n  " shownFindings)
    message(FATAL_ERROR "Networking declared in the Apple stubs:\n  ${shownFindings}")
endif()
message("no networking API in ${headerCount} stub headers")
