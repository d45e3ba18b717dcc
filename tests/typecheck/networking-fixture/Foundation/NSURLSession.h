// A header the networking check must reject (its own test proves it can).
@class NSURLSession;
int socket(int domain, int type, int protocol);
