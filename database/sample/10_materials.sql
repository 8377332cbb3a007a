-- SPDX-License-Identifier: MIT
/* Materials: twelve books of five product families; each family comes in two grades of climate, four variants and
   eight sizes. The catalog tree and the tables of contents are the same classification without prices. */

create global temporary table W_BOOK (
    NR integer,
    NAME varchar(100),
    KLASSGR varchar(30)
) on commit preserve rows;

create global temporary table W_FAMILY (
    BOOK integer,
    NR integer,
    NAME varchar(100),
    EDIZM varchar(30),
    PRICE double precision,
    WEIGHT double precision
) on commit preserve rows;

-- What the products of a book differ in: four variants (SORT = 'V') and eight sizes (SORT = 'S').
create global temporary table W_DETAIL (
    BOOK integer,
    SORT char(1),
    NR integer,
    NAME varchar(100)
) on commit preserve rows;

create global temporary table W_HEADING (
    NR integer,
    ID bigint,
    PARENTID bigint,
    NAME varchar(255),
    TREE varchar(30)
) on commit preserve rows;

create global temporary table W_MATERIAL (
    NR integer,
    ID bigint,
    PARENTID bigint,
    KODUZLA varchar(30),
    NOMER varchar(50),
    NAME varchar(1000),
    EDIZM varchar(30),
    BRUTTO varchar(30),
    KLASSGR varchar(30),
    PRICE double precision
) on commit preserve rows;
commit;

set term ^ ;
create procedure W_SPLIT (BOOK integer, SORT char(1), ITEMS varchar(500)) as
    declare nr integer = 0;
begin
    items = items || ';';
    while (items <> '') do
    begin
        nr = nr + 1;
        insert into W_DETAIL values (:book, :sort, :nr, substring(:items from 1 for position(';', :items) - 1));
        items = substring(items from position(';', items) + 1);
    end
end^
set term ; ^
commit;

insert into W_BOOK values (1, 'Материалы нерудные и смеси', 'I');
insert into W_BOOK values (2, 'Бетоны и растворы', 'I');
insert into W_BOOK values (3, 'Кирпич, камни и блоки стеновые', 'I');
insert into W_BOOK values (4, 'Изделия железобетонные', 'I');
insert into W_BOOK values (5, 'Металлопрокат', 'I');
insert into W_BOOK values (6, 'Лесоматериалы', 'II');
insert into W_BOOK values (7, 'Материалы кровельные и гидроизоляционные', 'II');
insert into W_BOOK values (8, 'Материалы теплоизоляционные', 'III');
insert into W_BOOK values (9, 'Материалы лакокрасочные', 'II');
insert into W_BOOK values (10, 'Трубы и арматура', 'II');
insert into W_BOOK values (11, 'Кабели и провода', 'III');
insert into W_BOOK values (12, 'Материалы отделочные', 'II');

insert into W_FAMILY values (1, 1, 'Щебень из гравия', 'м3', 98.5, 1.5);
insert into W_FAMILY values (1, 2, 'Щебень из природного камня', 'м3', 131.2, 1.6);
insert into W_FAMILY values (1, 3, 'Щебень шлаковый', 'м3', 76.4, 1.4);
insert into W_FAMILY values (1, 4, 'Гравий природный', 'м3', 84.1, 1.7);
insert into W_FAMILY values (1, 5, 'Смесь песчано-гравийная', 'м3', 59.9, 1.65);
insert into W_FAMILY values (2, 1, 'Бетон тяжелый', 'м3', 560, 2.4);
insert into W_FAMILY values (2, 2, 'Бетон мелкозернистый', 'м3', 592.6, 2.2);
insert into W_FAMILY values (2, 3, 'Бетон легкий на пористых заполнителях', 'м3', 733.3, 1.6);
insert into W_FAMILY values (2, 4, 'Бетон дорожный', 'м3', 665.7, 2.45);
insert into W_FAMILY values (2, 5, 'Смесь бетонная самоуплотняющаяся', 'м3', 871.4, 2.4);
insert into W_FAMILY values (3, 1, 'Кирпич керамический', '1000 шт.', 1752.6, 3.5);
insert into W_FAMILY values (3, 2, 'Кирпич силикатный', '1000 шт.', 1160.1, 3.7);
insert into W_FAMILY values (3, 3, 'Камни керамические поризованные', '1000 шт.', 2410.8, 5.1);
insert into W_FAMILY values (3, 4, 'Блоки из ячеистого бетона', 'м3', 820.3, 0.6);
insert into W_FAMILY values (3, 5, 'Блоки бетонные стеновые', 'м3', 564.9, 1.9);
insert into W_FAMILY values (4, 1, 'Плиты перекрытия многопустотные', 'м2', 245.7, 0.3);
insert into W_FAMILY values (4, 2, 'Сваи забивные цельные', 'м3', 1687.4, 2.5);
insert into W_FAMILY values (4, 3, 'Перемычки брусковые', 'м3', 1489, 2.5);
insert into W_FAMILY values (4, 4, 'Балки фундаментные', 'м3', 1744.2, 2.5);
insert into W_FAMILY values (4, 5, 'Кольца стеновые смотровых колодцев', 'м', 368.5, 0.9);
insert into W_FAMILY values (5, 1, 'Сталь круглая горячекатаная', 'т', 6210, 1.02);
insert into W_FAMILY values (5, 2, 'Сталь угловая равнополочная', 'т', 6390.5, 1.02);
insert into W_FAMILY values (5, 3, 'Швеллеры', 'т', 6544.1, 1.02);
insert into W_FAMILY values (5, 4, 'Балки двутавровые', 'т', 6897.3, 1.02);
insert into W_FAMILY values (5, 5, 'Сталь листовая горячекатаная', 'т', 5891.6, 1.02);
insert into W_FAMILY values (6, 1, 'Доска обрезная хвойных пород', 'м3', 1320, 0.65);
insert into W_FAMILY values (6, 2, 'Брусья обрезные хвойных пород', 'м3', 1488.7, 0.65);
insert into W_FAMILY values (6, 3, 'Бруски обрезные хвойных пород', 'м3', 1539.4, 0.65);
insert into W_FAMILY values (6, 4, 'Доска для покрытия полов', 'м3', 2410.9, 0.62);
insert into W_FAMILY values (6, 5, 'Фанера клееная', 'м3', 4949.4, 0.7);
insert into W_FAMILY values (7, 1, 'Материал рулонный наплавляемый', 'м2', 31.8, 0.005);
insert into W_FAMILY values (7, 2, 'Мембрана полимерная', 'м2', 64.2, 0.002);
insert into W_FAMILY values (7, 3, 'Пленка пароизоляционная', 'м2', 7.1, 0.0002);
insert into W_FAMILY values (7, 4, 'Пластины гидроизоляционные', 'м2', 88.9, 0.004);
insert into W_FAMILY values (7, 5, 'Полотно геотекстильное', 'м2', 9.7, 0.0004);
insert into W_FAMILY values (8, 1, 'Плиты минераловатные', 'м3', 530.4, 0.12);
insert into W_FAMILY values (8, 2, 'Плиты пенополистирольные', 'м3', 481.9, 0.03);
insert into W_FAMILY values (8, 3, 'Маты прошивные', 'м3', 442.5, 0.1);
insert into W_FAMILY values (8, 4, 'Цилиндры навивные', 'м3', 1890.1, 0.11);
insert into W_FAMILY values (8, 5, 'Плиты из пеностекла', 'м3', 2215.7, 0.13);
insert into W_FAMILY values (9, 1, 'Краска водно-дисперсионная', 'т', 15481, 1.08);
insert into W_FAMILY values (9, 2, 'Эмаль алкидная', 'т', 28647.3, 1.09);
insert into W_FAMILY values (9, 3, 'Грунтовка глубокого проникновения', 'кг', 11.6, 0.0011);
insert into W_FAMILY values (9, 4, 'Шпатлевка клеевая', 'т', 4294.7, 1.05);
insert into W_FAMILY values (9, 5, 'Лак полиуретановый', 'т', 42700.01, 1.1);
insert into W_FAMILY values (10, 1, 'Трубы стальные электросварные', 'м', 45.2, 0.012);
insert into W_FAMILY values (10, 2, 'Трубы полиэтиленовые напорные', 'м', 39.8, 0.003);
insert into W_FAMILY values (10, 3, 'Трубы чугунные канализационные', 'м', 112.4, 0.02);
insert into W_FAMILY values (10, 4, 'Задвижки клиновые фланцевые', 'шт.', 733.2, 0.045);
insert into W_FAMILY values (10, 5, 'Клапаны обратные подъемные', 'шт.', 364.7, 0.018);
insert into W_FAMILY values (11, 1, 'Кабель силовой с медными жилами', '1000 м', 8425.5, 0.4);
insert into W_FAMILY values (11, 2, 'Кабель силовой с алюминиевыми жилами', '1000 м', 3610.2, 0.25);
insert into W_FAMILY values (11, 3, 'Кабель контрольный', '1000 м', 6318.8, 0.3);
insert into W_FAMILY values (11, 4, 'Провод установочный', '1000 м', 1743.9, 0.1);
insert into W_FAMILY values (11, 5, 'Кабель связи симметричный', '1000 м', 5120.4, 0.2);
insert into W_FAMILY values (12, 1, 'Плитка керамическая', 'м2', 69.8, 0.018);
insert into W_FAMILY values (12, 2, 'Линолеум', 'м2', 71.2, 0.003);
insert into W_FAMILY values (12, 3, 'Панели стеновые декоративные', 'м2', 145.3, 0.009);
insert into W_FAMILY values (12, 4, 'Покрытие ламинированное', 'м2', 93.6, 0.008);
insert into W_FAMILY values (12, 5, 'Плитка керамогранитная', 'м2', 171.9, 0.022);

execute procedure W_SPLIT(1, 'V', 'марка 400;марка 600;марка 800;марка 1000');
execute procedure W_SPLIT(1, 'S', 'фракция 3-8 мм;фракция 5-10 мм;фракция 5-20 мм;фракция 10-20 мм;фракция 20-40 мм;фракция 40-70 мм;фракция 70-120 мм;фракция 80-150 мм');
execute procedure W_SPLIT(2, 'V', 'подвижность П1;подвижность П2;подвижность П3;подвижность П4');
execute procedure W_SPLIT(2, 'S', 'класс B7,5 (М100);класс B10 (М150);класс B12,5 (М150);класс B15 (М200);класс B20 (М250);класс B22,5 (М300);класс B25 (М350);класс B30 (М400)');
execute procedure W_SPLIT(3, 'V', 'марка М75;марка М100;марка М125;марка М150');
execute procedure W_SPLIT(3, 'S', 'размер 250х120х65 мм;размер 250х120х88 мм;размер 250х120х140 мм;размер 288х138х65 мм;размер 380х250х219 мм;размер 398х188х190 мм;размер 510х250х219 мм;размер 600х300х200 мм');
execute procedure W_SPLIT(4, 'V', 'бетон класса B15;бетон класса B20;бетон класса B25;бетон класса B30');
execute procedure W_SPLIT(4, 'S', 'длина 0,9 м;длина 1,2 м;длина 1,8 м;длина 2,4 м;длина 3,6 м;длина 4,8 м;длина 6,0 м;длина 7,2 м');
execute procedure W_SPLIT(5, 'V', 'марка стали Ст3пс;марка стали Ст3сп;марка стали 09Г2С;марка стали 10ХСНД');
execute procedure W_SPLIT(5, 'S', 'размер 6 мм;размер 8 мм;размер 10 мм;размер 12 мм;размер 14 мм;размер 16 мм;размер 20 мм;размер 25 мм');
execute procedure W_SPLIT(6, 'V', 'сорт I;сорт II;сорт III;сорт IV');
execute procedure W_SPLIT(6, 'S', 'толщина 19 мм;толщина 22 мм;толщина 25 мм;толщина 32 мм;толщина 40 мм;толщина 50 мм;толщина 75 мм;толщина 100 мм');
execute procedure W_SPLIT(7, 'V', 'для верхнего слоя;для нижнего слоя;для подземных конструкций;для эксплуатируемых кровель');
execute procedure W_SPLIT(7, 'S', 'толщина 0,8 мм;толщина 1,0 мм;толщина 1,2 мм;толщина 1,5 мм;толщина 2,0 мм;толщина 3,0 мм;толщина 4,0 мм;толщина 5,0 мм');
execute procedure W_SPLIT(8, 'V', 'плотность 35 кг/м3;плотность 75 кг/м3;плотность 110 кг/м3;плотность 160 кг/м3');
execute procedure W_SPLIT(8, 'S', 'толщина 20 мм;толщина 30 мм;толщина 40 мм;толщина 50 мм;толщина 60 мм;толщина 80 мм;толщина 100 мм;толщина 120 мм');
execute procedure W_SPLIT(9, 'V', 'для наружных работ;для внутренних работ;по металлу;по дереву');
execute procedure W_SPLIT(9, 'S', 'цвет белый;цвет слоновая кость;цвет светло-серый;цвет темно-серый;цвет красно-коричневый;цвет зеленый;цвет синий;бесцветная основа');
execute procedure W_SPLIT(10, 'V', 'номинальное давление 0,6 МПа;номинальное давление 1,0 МПа;номинальное давление 1,6 МПа;номинальное давление 2,5 МПа');
execute procedure W_SPLIT(10, 'S', 'диаметр 25 мм;диаметр 32 мм;диаметр 50 мм;диаметр 80 мм;диаметр 100 мм;диаметр 150 мм;диаметр 200 мм;диаметр 300 мм');
execute procedure W_SPLIT(11, 'V', 'число жил 2;число жил 3;число жил 4;число жил 5');
execute procedure W_SPLIT(11, 'S', 'сечение 1,5 мм2;сечение 2,5 мм2;сечение 4 мм2;сечение 6 мм2;сечение 10 мм2;сечение 16 мм2;сечение 25 мм2;сечение 35 мм2');
execute procedure W_SPLIT(12, 'V', 'класс износостойкости 21;класс износостойкости 23;класс износостойкости 32;класс износостойкости 34');
execute procedure W_SPLIT(12, 'S', 'размер 200х200 мм;размер 200х300 мм;размер 300х300 мм;размер 300х600 мм;размер 400х400 мм;размер 600х600 мм;размер 600х1200 мм;размер 1200х200 мм');
commit;

insert into W_MATERIAL (NR, ID, PARENTID, KODUZLA, NOMER, NAME, EDIZM, BRUTTO, KLASSGR, PRICE)
select row_number() over (order by F.BOOK, G.NR, F.NR, V.NR, S.NR),
       ((F.BOOK * 10 + G.NR) * 100 + F.NR) * 1000000 + V.NR * 10000 + S.NR,
       ((F.BOOK * 10 + G.NR) * 100 + F.NR) * 1000000 + V.NR * 10000,
       lpad(F.BOOK, 2, '0') || '.' || G.NR || '.' || lpad(F.NR, 2, '0') || '.' || lpad(V.NR, 2, '0'),
       lpad(F.BOOK, 2, '0') || '.' || G.NR || '.' || lpad(F.NR, 2, '0') || '.' || lpad(V.NR, 2, '0') || '-' || lpad(S.NR, 4, '0'),
       F.NAME || ', ' || V.NAME || ', ' || S.NAME || G.SUFFIX,
       F.EDIZM,
       replace(cast(F.WEIGHT * (0.9 + S.NR * 0.05) as numeric(9,4)), '.', ','),
       B.KLASSGR,
       F.PRICE * (1 + V.NR * 0.06 + S.NR * 0.035) * G.FACTOR
from W_FAMILY F
join W_BOOK B on B.NR = F.BOOK
join W_DETAIL V on V.BOOK = F.BOOK and V.SORT = 'V'
join W_DETAIL S on S.BOOK = F.BOOK and S.SORT = 'S'
cross join (
    select 1 as NR, cast('' as varchar(100)) as SUFFIX, 1.0 as FACTOR from RDB$DATABASE union all
    select 2, ', исполнение для районов Крайнего Севера', 1.35 from RDB$DATABASE) G;

/* Some names are as long as catalogs really have them, a few take up the whole column. */
update W_MATERIAL
set NAME = NAME || ', для работ при температуре наружного воздуха до минус 50 градусов, с приемочным контролем каждой партии, '
    || 'в заводской упаковке, с комплектом крепежных изделий и паспортом качества, с доставкой до приобъектного склада '
    || 'автомобильным транспортом на расстояние до 30 км'
where mod(NR, 19) = 4;
update W_MATERIAL
set NAME = left(rpad(NAME, 1000, '; то же, при поставке отдельными партиями с разгрузкой и складированием на объекте строительства'), 1000)
where mod(NR, 211) = 61;

/* The four upper levels of the classification; their order by ID is that of the codes. */
insert into W_HEADING
select row_number() over (order by ID), ID, PARENTID, NAME, TREE
from (
    select NR * 1000000000 as ID, cast(null as bigint) as PARENTID, 'Книга ' || lpad(NR, 2, '0') || '. ' || NAME as NAME,
           lpad(NR, 2, '0') as TREE
    from W_BOOK
    union all
    select (B.NR * 10 + G.NR) * 100000000, B.NR * 1000000000,
           'Часть ' || lpad(B.NR, 2, '0') || '.' || G.NR || '. ' || B.NAME || ' ' || G.NAME,
           lpad(B.NR, 2, '0') || '.' || G.NR
    from W_BOOK B
    cross join (
        select 1 as NR, cast('общего назначения' as varchar(100)) as NAME from RDB$DATABASE union all
        select 2, 'для районов Крайнего Севера' from RDB$DATABASE) G
    union all
    select distinct M.PARENTID / 1000000 * 1000000, M.PARENTID / 100000000 * 100000000,
           'Раздел ' || left(M.KODUZLA, 7) || '. ' || F.NAME, left(M.KODUZLA, 7)
    from W_MATERIAL M
    join W_FAMILY F on F.BOOK = M.PARENTID / 1000000000 and F.NR = mod(M.PARENTID / 1000000, 100)
    union all
    select distinct M.PARENTID, M.PARENTID / 1000000 * 1000000,
           'Группа ' || M.KODUZLA || '. ' || F.NAME || ', ' || V.NAME, M.KODUZLA
    from W_MATERIAL M
    join W_FAMILY F on F.BOOK = M.PARENTID / 1000000000 and F.NR = mod(M.PARENTID / 1000000, 100)
    join W_DETAIL V on V.BOOK = F.BOOK and V.SORT = 'V' and V.NR = mod(M.PARENTID / 10000, 100));

insert into KATALOG
select ID, PARENTID, iif(mod(NR, 301) = 300, null, NAME), iif(mod(NR, 157) = 100, null, TREE) from W_HEADING
union all
select ID, PARENTID, NAME, NOMER from W_MATERIAL;
commit;

/* Every column that may hold NULL does so in some row; now and then two neighbours share a KOD. */
set term ^ ;
execute block as
    declare prefix varchar(10);
    declare factor double precision;
begin
    for select PREFIX, FACTOR from W_EDITION into prefix, factor
    do
    begin
        execute statement (
            'insert into ' || prefix || 'KATALOGKTC_TABLE
             select row_number() over (order by C.PER, C.REGIONID, M.NR), C.PER, C.REGIONID,
                    iif(mod(M.NR, 1499) = 0, null, M.NR - iif(mod(M.NR, 40) = 0, 1, 0)),
                    iif(mod(M.NR, 577) = 3, null, M.NOMER),
                    iif(mod(M.NR, 1201) = 5, null, M.NAME),
                    iif(mod(M.NR, 409) = 7, null, M.EDIZM),
                    iif(mod(M.NR, 83) = 9, null, M.BRUTTO),
                    iif(mod(M.NR, 97) = 11, null, M.KLASSGR),
                    iif(mod(M.NR, 613) = 13, null, M.KODUZLA),
                    iif(mod(M.NR, 211) = 15, null, M.PRICE * :E),
                    iif(mod(M.NR, 223) = 17, null, M.PRICE * :E * C.FACTOR * (1 + mod(M.NR, 7) / 50.0)),
                    iif(mod(M.NR, 227) = 19, null, M.PRICE * :E * C.FACTOR * (1 + mod(M.NR, 7) / 50.0) * 1.08),
                    iif(mod(M.NR, 229) = 21, null, C.FACTOR * (1 + mod(M.NR, 7) / 50.0) * 1.08)
             from W_COVERAGE C join W_MATERIAL M on mod(M.NR, C.STEP) = 0')
            (E := factor);
        execute statement
            'insert into ' || prefix || 'KATOGLAVLENIE_TABLE
             select row_number() over (order by C.PER, C.REGIONID, H.NR), C.PER, C.REGIONID,
                    iif(mod(H.NR, 499) = 0, null, H.NR),
                    iif(mod(H.NR, 307) = 3, null, H.NAME),
                    iif(mod(H.NR, 89) = 5, null, H.TREE)
             from W_COVERAGE C join W_HEADING H on mod(H.NR, C.STEP) = 0';
    end
end^
set term ; ^
commit;
