// Linked against everything that hollerwick-host and its plug-in are linked against, and done at once: what starting
// costs before a program has done anything.

int main()
{
    return 0;
}
