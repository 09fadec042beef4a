/* Runs only where the host can execute programs of the target ABI. */
int main(void) { return 0; }
