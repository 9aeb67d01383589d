-- Undoes what spGodownTotalStockVerification did for one entry, from its record of changes:
-- each stock row moves back by the change made to it (so movements made since are kept), rows
-- that the count created go again when they are empty, and the record is cleared. An entry
-- that was never confirmed has no record, and nothing moves.
CREATE FUNCTION spReverseGodownTotalStockVerification(svhid integer, godownid integer)
RETURNS integer
LANGUAGE plpgsql AS $$
BEGIN
    UPDATE moigodownstock
    SET gsStock = round(gsStock - c.delta, 3)
    FROM (SELECT tvcItemId AS item,
                 tvcShipmentId AS shipment,
                 sum(tvcNewStock - tvcOldStock) AS delta
          FROM loiTotalVerificationChange
          WHERE tvcGodownId = godownid AND tvcSvhId = svhid
          GROUP BY tvcItemId, tvcShipmentId) c
    WHERE gsGodownId = godownid AND gsItemId = c.item AND gsShipmentId = c.shipment;

    DELETE FROM moigodownstock
    WHERE gsGodownId = godownid AND gsStock = 0 AND gsBadStock = 0
      AND EXISTS (SELECT 1 FROM loiTotalVerificationChange c
                  WHERE c.tvcGodownId = godownid AND c.tvcSvhId = svhid AND c.tvcCreated = 1
                    AND c.tvcItemId = gsItemId AND c.tvcShipmentId = gsShipmentId);

    DELETE FROM loiTotalVerificationChange
    WHERE tvcGodownId = godownid AND tvcSvhId = svhid;
    RETURN 0;
END
$$;
