-- Written by hand: the statement's own aliases, != and NOT IN, IS NOT NULL,
-- a BETWEEN on dates and a LIKE pattern.
select cu.COMPANY, cu.CITY, o.TOTAL
from CUSTOMERS cu
  left join ORDERS o on o.CUST_ID = cu.CUST_ID
where cu.COUNTRY != 'Germany'
  and o.STATUS not in ('C', 'X')
  and o.SHIP_DATE is not null
  and (o.ORDER_DATE between '2024-01-01' and '2024-06-30' or o.TOTAL >= 1000)
  and cu.COMPANY like '%Trading%'
order by cu.CITY, o.TOTAL desc;
