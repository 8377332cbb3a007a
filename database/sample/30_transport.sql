-- SPDX-License-Identifier: MIT
/* Transport: six ways of carrying, four classes of cargo, twenty-five distances. One table serves all editions. */
insert into FER20KATALOGPEREVOZKA_TABLE
with recursive DISTANCE as (
    select 1 as NR from RDB$DATABASE
    union all
    select NR + 1 from DISTANCE where NR < 25),
CARRIAGE as (
    select row_number() over (order by V.NR, K.NR, D.NR) as NR,
           '03-' || lpad(V.NR, 2, '0') || '-0' || K.NR || '-' || lpad(D.NR, 3, '0') as OBOSNOV,
           V.NAME || ' на расстояние ' || iif(D.NR <= 10, D.NR, D.NR * 10 - 90) || ' км, класс груза ' || K.NAME as NAME,
           K.NAME as KLASSGR,
           (V.PRICE + K.NR * 0.8) * (1 + 0.11 * iif(D.NR <= 10, D.NR, D.NR * 10 - 90)) as PRICE
    from DISTANCE D
    cross join (
        select 1 as NR, cast('Перевозка грузов автомобилями-самосвалами грузоподъемностью 10 т вне карьера' as varchar(100)) as NAME, 3.2 as PRICE from RDB$DATABASE union all
        select 2, 'Перевозка грузов автомобилями-самосвалами грузоподъемностью 15 т в карьере', 3.6 from RDB$DATABASE union all
        select 3, 'Перевозка грузов автомобилями бортовыми грузоподъемностью до 15 т', 5.1 from RDB$DATABASE union all
        select 4, 'Перевозка строительных конструкций тягачами с полуприцепом', 8.4 from RDB$DATABASE union all
        select 5, 'Перевозка сыпучих грузов железнодорожным транспортом', 2.7 from RDB$DATABASE union all
        select 6, 'Перевозка бетонных смесей автобетоносмесителями', 9.9 from RDB$DATABASE) V
    cross join (
        select 1 as NR, cast('I' as varchar(30)) as NAME from RDB$DATABASE union all
        select 2, 'II' from RDB$DATABASE union all
        select 3, 'III' from RDB$DATABASE union all
        select 4, 'IV' from RDB$DATABASE) K)
select row_number() over (order by C.PER, C.REGIONID, T.NR), C.PER, C.REGIONID,
       iif(mod(T.NR, 499) = 0, null, T.NR - iif(mod(T.NR, 40) = 0, 1, 0)),
       iif(mod(T.NR, 101) = 3, null, T.OBOSNOV),
       iif(mod(T.NR, 397) = 5, null, T.NAME),
       iif(mod(T.NR, 103) = 7, null, T.KLASSGR),
       iif(mod(T.NR, 107) = 9, null, T.PRICE),
       iif(mod(T.NR, 109) = 11, null, T.PRICE * C.FACTOR)
from W_COVERAGE C join CARRIAGE T on mod(T.NR, C.STEP) = 0;
commit;
