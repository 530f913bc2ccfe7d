-- Tables of TDS Forms. Applied on every connect: every statement must be idempotent.

-- forms tables
