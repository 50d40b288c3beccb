-- Makes the archive that several consoles share, in a database of PostgreSQL 13 or newer:
--
--     createdb --encoding=UTF8 --template=template0 orvia
--     psql --dbname=orvia --file=archive.sql
--
-- By the owner of the database, who may make roles. It may be run again: what is there stays as it
-- is, and rights are put right. docs/shared-archive.md tells the rest.

\set ON_ERROR_STOP on
SET client_min_messages = warning;
BEGIN;

-- One database makes them for all of its server.
DO $$
DECLARE
  one text;
BEGIN
  FOREACH one IN ARRAY ARRAY['orvia_read', 'orvia_file'] LOOP
    IF NOT EXISTS (SELECT FROM pg_roles WHERE rolname = one) THEN
      EXECUTE format('CREATE ROLE %I NOLOGIN', one);
    END IF;
  END LOOP;
  IF current_setting('server_encoding') <> 'UTF8' THEN
    RAISE EXCEPTION 'The database has to be of the encoding UTF8.';
  END IF;
END
$$;

CREATE SCHEMA IF NOT EXISTS orvia;
SET LOCAL search_path = orvia;

CREATE TABLE IF NOT EXISTS about(
  identity text NOT NULL,
  version integer NOT NULL,
  the_only boolean PRIMARY KEY DEFAULT true CHECK (the_only));
INSERT INTO about(identity, version) VALUES(replace(gen_random_uuid()::text, '-', ''), 3)
  ON CONFLICT DO NOTHING;

CREATE TABLE IF NOT EXISTS loggers(
  id integer GENERATED ALWAYS AS IDENTITY PRIMARY KEY,
  mac text COLLATE "C" NOT NULL UNIQUE,
  name text COLLATE "C" NOT NULL,
  records bigint NOT NULL,
  uploads bigint NOT NULL,
  revision bigint NOT NULL);

CREATE TABLE IF NOT EXISTS settings(
  id integer GENERATED ALWAYS AS IDENTITY PRIMARY KEY,
  logger integer NOT NULL,
  image bytea NOT NULL,
  firmware integer NOT NULL,
  analog_channels integer NOT NULL,
  pulse_channels integer NOT NULL,
  sample_on_demand integer NOT NULL,
  flow_decimals integer NOT NULL,
  velocity_decimals integer NOT NULL,
  equation_offset double precision NOT NULL,
  equation_exponent double precision NOT NULL,
  equation_multiplier double precision NOT NULL,
  device text COLLATE "C" NOT NULL);
CREATE INDEX IF NOT EXISTS settings_of_logger ON settings(logger);

CREATE TABLE IF NOT EXISTS points(
  settings integer NOT NULL,
  number integer NOT NULL,
  level double precision NOT NULL,
  flow double precision NOT NULL,
  PRIMARY KEY(settings, number));

CREATE TABLE IF NOT EXISTS uploads(
  id integer GENERATED ALWAYS AS IDENTITY PRIMARY KEY,
  logger integer NOT NULL,
  begun bigint NOT NULL,
  ended bigint,
  outcome text,
  firmware integer NOT NULL,
  name text COLLATE "C" NOT NULL,
  settings integer NOT NULL,
  said bigint NOT NULL,
  received bigint NOT NULL,
  origin text COLLATE "C" NOT NULL DEFAULT '');
CREATE UNIQUE INDEX IF NOT EXISTS uploads_by_begin ON uploads(logger, begun);
-- Whatever goes wrong, no upload is handed over twice.
CREATE UNIQUE INDEX IF NOT EXISTS uploads_by_origin ON uploads(logger, origin) WHERE origin <> '';

-- Parted by the year of the logger's clock. Wide columns first: the row is the shorter for it.
CREATE TABLE IF NOT EXISTS records(
  place bigint NOT NULL,
  time bigint NOT NULL,
  logger integer NOT NULL,
  upload integer NOT NULL,
  nth integer NOT NULL,
  c1 integer NOT NULL,
  c2 integer NOT NULL,
  c3 integer NOT NULL,
  c4 integer NOT NULL,
  c5 integer NOT NULL,
  c6 integer NOT NULL,
  c7 integer NOT NULL,
  c8 integer NOT NULL,
  c9 integer NOT NULL,
  c10 integer NOT NULL) PARTITION BY RANGE (time);
CREATE INDEX IF NOT EXISTS records_by_time ON records(logger, time);
-- What no year's part takes: clocks that are off.
CREATE TABLE IF NOT EXISTS records_other PARTITION OF records DEFAULT;
-- With the time: where a period begins and ends in the series is found without its records.
CREATE UNIQUE INDEX IF NOT EXISTS records_other_by_place
  ON records_other(logger, place) INCLUDE (time);

CREATE TABLE IF NOT EXISTS rounds(
  id integer GENERATED ALWAYS AS IDENTITY PRIMARY KEY,
  begun bigint NOT NULL,
  ended bigint,
  loggers bigint NOT NULL,
  done bigint NOT NULL,
  log text NOT NULL,
  digest text NOT NULL);
CREATE INDEX IF NOT EXISTS rounds_by_begin ON rounds(begun);

CREATE TABLE IF NOT EXISTS handed(
  target text NOT NULL,
  upload integer NOT NULL,
  received bigint NOT NULL,
  ended bigint,
  PRIMARY KEY(target, upload));

-- Gives the records of a year a part of their own, and moves there what of them is already filed.
CREATE OR REPLACE FUNCTION add_year(year integer) RETURNS void LANGUAGE plpgsql
SET search_path = orvia, pg_temp AS $$
DECLARE
  part text := 'records_' || year;
  -- A packed time has the months since January 2000 above 22 bits.
  first bigint := (year - 2000)::bigint * 12 << 22;
  behind bigint := (year - 1999)::bigint * 12 << 22;
BEGIN
  IF year NOT BETWEEN 2000 AND 2084 THEN
    RAISE EXCEPTION 'No logger''s clock tells the year %.', year;
  END IF;
  IF to_regclass(part) IS NOT NULL THEN
    RETURN;
  END IF;
  LOCK TABLE records IN ACCESS EXCLUSIVE MODE;
  EXECUTE format('CREATE TABLE %I (LIKE records)', part);
  EXECUTE format('WITH moved AS (DELETE FROM records_other WHERE time >= %s AND time < %s
                                 RETURNING *) INSERT INTO %I SELECT * FROM moved',
                 first, behind, part);
  EXECUTE format('CREATE UNIQUE INDEX %I ON %I(logger, place) INCLUDE (time)',
                 part || '_by_place', part);
  EXECUTE format('ALTER TABLE records ATTACH PARTITION %I FOR VALUES FROM (%s) TO (%s)',
                 part, first, behind);
END
$$;
REVOKE EXECUTE ON FUNCTION add_year(integer) FROM PUBLIC;

DO $$
DECLARE
  this_year integer := extract(year FROM now());
BEGIN
  FOR year IN this_year - 10 .. this_year + 4 LOOP
    PERFORM orvia.add_year(year);
  END LOOP;
END
$$;

-- Who reads sees all of it; who files may change what consoles write, and make no tables.
REVOKE ALL ON ALL TABLES IN SCHEMA orvia FROM PUBLIC, orvia_read, orvia_file;
GRANT USAGE ON SCHEMA orvia TO orvia_read, orvia_file;
GRANT SELECT ON about, loggers, settings, points, uploads, records, rounds, handed
  TO orvia_read, orvia_file;
GRANT INSERT, UPDATE, DELETE ON loggers, settings, points, uploads, records, rounds, handed
  TO orvia_file;

COMMIT;
