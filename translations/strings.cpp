// Holds the embedded string tables; the tables themselves are resources.
