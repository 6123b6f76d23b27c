#!/usr/bin/env bash
# Developer check, not part of the test run: loads examples/data/sales.sql
# into a temporary SQLite file and into the PostgreSQL server of
# with-postgres.sh, runs the same queries on both and compares the answers.
# Exits non-zero and shows the difference when the two databases disagree.
set -euo pipefail
cd "$(dirname "$0")/.."

if [ -z "${TS4_PG_URL:-}" ]; then
  exec bash scripts/with-postgres.sh bash "$0" "$@"
fi

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

sqlite3 -bail "$work/sales.db" <examples/data/sales.sql

# Written so that both engines print alike: money as whole cents, booleans
# as 0/1, nulls as empty fields, rows in a fixed order.
cat >"$work/queries.sql" <<'EOF'
select 'employees', count(*), count(REPORTS_TO), min(HIRE_DATE), max(HIRE_DATE) from EMPLOYEES;
select 'customers', count(*), count(CITY), min(SINCE), max(SINCE), cast(sum(CREDIT_LIMIT) as bigint) from CUSTOMERS;
select 'products', count(*), sum(case when DISCONTINUED then 1 else 0 end),
       cast(round(sum(LIST_PRICE) * 100) as bigint) from PRODUCTS;
select 'orders', count(*), min(ORDER_DATE), max(ORDER_DATE), max(SHIP_DATE),
       min(SHIP_TIME), max(SHIP_TIME), min(PLACED_AT), max(PLACED_AT),
       cast(round(sum(TOTAL) * 100) as bigint) from ORDERS;
select 'not shipped', count(*) from ORDERS where SHIP_DATE is null;
select 'no rep', count(*) from ORDERS where EMP_ID is null;
select 'items', count(*), sum(QUANTITY), cast(round(sum(QUANTITY * UNIT_PRICE) * 100) as bigint)
from ORDER_ITEMS;
select 'country', COUNTRY, count(*) from CUSTOMERS group by COUNTRY order by COUNTRY;
select 'status', STATUS, count(*) from ORDERS group by STATUS order by STATUS;
select 'category', CATEGORY, count(*) from PRODUCTS group by CATEGORY order by CATEGORY;
select 'big 2024 DE', count(*) from ORDERS O join CUSTOMERS C on C.CUST_ID = O.CUST_ID
where C.COUNTRY = 'DE' and O.ORDER_DATE between '2024-01-01' and '2024-12-31' and O.TOTAL >= 1000;
select 'E', EMP_ID, LAST_NAME, FIRST_NAME, HIRE_DATE, REPORTS_TO from EMPLOYEES order by EMP_ID;
select 'C', CUST_ID, COMPANY, CITY, COUNTRY, cast(CREDIT_LIMIT * 100 as bigint), SINCE
from CUSTOMERS order by CUST_ID;
select 'P', PRODUCT_ID, NAME, CATEGORY, cast(round(LIST_PRICE * 100) as bigint),
       case when DISCONTINUED then 1 else 0 end from PRODUCTS order by PRODUCT_ID;
select 'O', ORDER_ID, CUST_ID, EMP_ID, ORDER_DATE, SHIP_DATE, SHIP_TIME, PLACED_AT, STATUS,
       cast(round(TOTAL * 100) as bigint) from ORDERS order by ORDER_ID;
select 'I', ORDER_ID, ITEM_NO, PRODUCT_ID, QUANTITY, cast(round(UNIT_PRICE * 100) as bigint)
from ORDER_ITEMS order by ORDER_ID, ITEM_NO;
EOF

sqlite3 "$work/sales.db" <"$work/queries.sql" >"$work/sqlite.txt"
psql -At -v ON_ERROR_STOP=1 "$TS4_PG_URL" -f "$work/queries.sql" >"$work/postgres.txt"

if ! diff -u "$work/sqlite.txt" "$work/postgres.txt" >"$work/diff.txt"; then
  echo "check-sample-db: SQLite and PostgreSQL disagree:" >&2
  head -n 60 "$work/diff.txt" >&2
  exit 1
fi
grep -v '^[ECPOI]|' "$work/sqlite.txt"
echo "check-sample-db: SQLite and PostgreSQL agree on $(wc -l <"$work/sqlite.txt") lines"
